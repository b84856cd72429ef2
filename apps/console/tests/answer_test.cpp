// The words that answer a box, for every button set a box may have, and the
// input that asks and answers in one stream.
#include <gtest/gtest.h>

#include <sstream>

#include "line_input.h"
#include "oxdm/common/shell/box_styles.h"
#include "terminal_presenter.h"

TEST(AnswerForWord, NamesOnlyTheButtonsOfTheBox) {
    struct Case {
        unsigned style;
        const char* word;
        int answer;  // 0: no button of the box
    };
    const Case cases[] = {
        {oxdmBox::YesNo | oxdmBox::IconQuestion, "yes", oxdmBox::IdYes},
        {oxdmBox::YesNo, " NO ", oxdmBox::IdNo},
        {oxdmBox::YesNo, "y", oxdmBox::IdYes},
        {oxdmBox::YesNo, "ok", 0},
        {oxdmBox::YesNo, "yess", 0},
        {oxdmBox::YesNo, "", 0},
        {oxdmBox::YesNoCancel, "c", oxdmBox::IdCancel},
        {oxdmBox::OKCancel, "OK", oxdmBox::IdOK},
        {oxdmBox::OKCancel, "yes", 0},
        {oxdmBox::AbortRetryIgnore, "r", oxdmBox::IdRetry},
        {oxdmBox::AbortRetryIgnore, "i", oxdmBox::IdIgnore},
        {oxdmBox::RetryCancel, "cancel", oxdmBox::IdCancel},
        // The overwrite question of a data conflict: yes and no, stop sign.
        {0x14, "no", oxdmBox::IdNo},
        // OK with a help flag above the button bits.
        {0x4010, "ok", oxdmBox::IdOK},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message() << "style 0x" << std::hex << c.style << " word '" << c.word << "'");
        EXPECT_EQ(AnswerForWord(c.style, c.word), c.answer);
    }
    EXPECT_EQ(ButtonWords(oxdmBox::YesNoCancel), "yes/no/cancel");
}

// A script's line that answers no question stays for the next command,
// under its own number; the box takes its default button and is counted.
TEST(TerminalPresenter, ScriptLineThatIsNoAnswerIsKept) {
    std::istringstream in("yes\nnext\nno\n");
    LineInput input(in, "script", true, "");
    TerminalPresenter presenter(input);
    EXPECT_EQ(presenter.MessageBox("Delete this customer?", "Sales", 0x24, 0), oxdmBox::IdYes);
    EXPECT_EQ(presenter.Unanswered(), 0);
    EXPECT_EQ(presenter.MessageBox("Save?", "Sales", oxdmBox::YesNo | oxdmBox::DefButton2, 0), oxdmBox::IdNo);
    EXPECT_EQ(presenter.Unanswered(), 1);
    EXPECT_EQ(input.Next().value_or("?"), "next");
    EXPECT_EQ(input.LineNumber(), 2);
    EXPECT_EQ(input.Next().value_or("?"), "no");
    EXPECT_EQ(input.LineNumber(), 3);
    // An information box asks nothing and reads nothing.
    EXPECT_EQ(presenter.MessageBox("Saved.", "Sales", oxdmBox::IconInformation, 0), oxdmBox::IdOK);
    EXPECT_EQ(presenter.BoxTexts().size(), 3u);
    presenter.Forget();
    EXPECT_TRUE(presenter.BoxTexts().empty());
    // At the end of the input the default button answers, and it counts.
    EXPECT_EQ(presenter.MessageBox("Delete?", "Sales", oxdmBox::YesNo, 0), oxdmBox::IdYes);
    EXPECT_EQ(presenter.Unanswered(), 2);
}
