// The user-interaction seam: boxes, answers, titles, status texts, waits.
#include <gtest/gtest.h>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"

namespace {

class PresenterTest : public ::testing::Test {
protected:
    void SetUp() override { oxdmDefaultPresenter().Clear(); }
    void TearDown() override {
        oxdmSetPresenter(nullptr);
        oxdmDefaultPresenter().Clear();
    }
};

TEST_F(PresenterTest, EmptyQueueAnswersTheDefaultButtonOfEachStyle) {
    using namespace oxdmBox;
    EXPECT_EQ(DefaultAnswer(OK | IconInformation), IdOK);
    EXPECT_EQ(DefaultAnswer(OKCancel), IdOK);
    EXPECT_EQ(DefaultAnswer(OKCancel | DefButton2), IdCancel);
    EXPECT_EQ(DefaultAnswer(YesNo | IconQuestion), IdYes);
    EXPECT_EQ(DefaultAnswer(YesNo | IconQuestion | DefButton2), IdNo);
    EXPECT_EQ(DefaultAnswer(YesNoCancel | DefButton3), IdCancel);
    EXPECT_EQ(DefaultAnswer(AbortRetryIgnore | DefButton2), IdRetry);
    EXPECT_EQ(DefaultAnswer(RetryCancel), IdRetry);
    // A default button beyond the style's buttons falls back to the first.
    EXPECT_EQ(DefaultAnswer(YesNo | DefButton3), IdYes);
}

TEST_F(PresenterTest, QueuedAnswersAreUsedInOrderThenTheDefault) {
    auto& p = oxdmDefaultPresenter();
    p.QueueAnswer(oxdmBox::IdNo);
    p.QueueAnswer(oxdmBox::IdCancel);
    oxdmMessageBox first("Delete?", "Orders", 0x24);
    oxdmMessageBox second("Save?", "Orders", 0x24);
    oxdmMessageBox third("Really?", "Orders", 0x24);
    EXPECT_TRUE(first.isNo());
    EXPECT_TRUE(second.isCancel());
    EXPECT_TRUE(third.isYes());
    ASSERT_EQ(p.Boxes().size(), 3u);
    EXPECT_EQ(p.Boxes()[0].text, "Delete?");
    EXPECT_EQ(p.Boxes()[0].title, "Orders");
    EXPECT_EQ(p.Boxes()[0].style, 0x24u);
    EXPECT_EQ(p.Boxes()[1].answer, oxdmBox::IdCancel);
}

TEST_F(PresenterTest, TaskBoxIsTitledByCaptionOrWarningAndBracketed) {
    oxTask task(3, "Customers");
    EXPECT_EQ(oxdmTaskMessageBox(&task, "One", 0x40), oxdmBox::IdOK);
    EXPECT_EQ(oxdmTaskMessageBox(nullptr, "Two", 0x40), oxdmBox::IdOK);
    const auto& boxes = oxdmDefaultPresenter().Boxes();
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_EQ(boxes[0].title, "Customers");
    EXPECT_EQ(boxes[1].title, "Warning");
    EXPECT_EQ(TaskWindowLookup::ModalDepth(), 0);
}

class DepthRecorder : public oxdmHeadlessPresenter {
public:
    int MessageBox(const CString& t, const CString& ti, unsigned s, unsigned h) override {
        depthDuringBox = TaskWindowLookup::ModalDepth();
        return oxdmHeadlessPresenter::MessageBox(t, ti, s, h);
    }
    int depthDuringBox = -1;
};

TEST_F(PresenterTest, InstalledPresenterReceivesEverythingUntilReset) {
    DepthRecorder mine;
    EXPECT_EQ(oxdmSetPresenter(&mine), &oxdmDefaultPresenter());
    oxdmTaskMessageBox(nullptr, "Inside", 0x40);
    EXPECT_EQ(mine.depthDuringBox, 1) << "a task box is shown inside the modal bracket";
    oxdmGlobalData::Instance()->DisplayStatus("Ready", false);
    oxdmGlobalData::Instance()->DisplayStatus("This field is read only.", true);
    oxdmGlobalData::Instance()->DisplayStatus("", true);
    xw_start_wait("");
    xw_start_wait("");
    xw_stop_wait();
    EXPECT_EQ(mine.WaitDepth(), 1);
    xw_stop_wait();
    xw_stop_wait();
    EXPECT_EQ(mine.WaitDepth(), 0);
    ASSERT_EQ(mine.StatusTexts().size(), 3u);
    EXPECT_EQ(mine.StatusTexts()[1], "This field is read only.");
    EXPECT_EQ(mine.Beeps(), 1) << "an empty text never beeps";
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());

    EXPECT_EQ(oxdmSetPresenter(nullptr), &mine);
    oxdmMessageBox after("After", "T", 0);
    EXPECT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    EXPECT_EQ(mine.Boxes().size(), 1u);
}

TEST_F(PresenterTest, ApplicationBoxIsTitledWithTheApplicationCode) {
    oxApp app("SM");
    OXSetApp(&app);
    oxdmMessageBox box("Help here", 0x40, 17);
    OXSetApp(nullptr);
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    EXPECT_EQ(oxdmDefaultPresenter().Boxes()[0].title, "SM");
}

TEST_F(PresenterTest, ClearForgetsQueuedAnswersToo) {
    auto& p = oxdmDefaultPresenter();
    p.QueueAnswer(oxdmBox::IdNo);
    p.DisplayStatus("x", true);
    p.Clear();
    oxdmMessageBox box("Q", "T", 0x24);
    EXPECT_TRUE(box.isYes());
    EXPECT_TRUE(p.StatusTexts().empty());
    EXPECT_EQ(p.Beeps(), 0);
}

}  // namespace
