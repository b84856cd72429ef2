// Events as values, the casts of the callback information, and operations.
#include <gtest/gtest.h>

#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/event.h"
#include "oxdm/notify/operation.h"

namespace {

TEST(Events, DefaultEventIsAllZeroAndNeitherKeyNorMouse) {
    const oxdmEvent e;
    EXPECT_EQ(e.hwnd, nullptr);
    EXPECT_EQ(e.message | e.wParam | static_cast<std::uintptr_t>(e.lParam) | e.time, 0u);
    EXPECT_EQ(e.pt.x | e.pt.y, 0);
    EXPECT_EQ(e.AsEvent(), &e);
    EXPECT_EQ(e.AsKey(), nullptr);
    EXPECT_EQ(e.AsMouse(), nullptr);
}

TEST(Events, KeyAndMouseAnswerThemselvesThroughTheBase) {
    const oxdmEvtKey key(nullptr, 0x100, 'A', 1);
    const oxdmEvtMouse mouse(nullptr, 0x201, 1, 0);
    const oxdmEvtGridKeyNav nav("Qty", "Price", oxdmEvtGridKeyNav::MoveLeft, false, &key);
    const oxdmEvent* events[] = {&key, &mouse, &nav};
    EXPECT_EQ(events[0]->AsKey(), &key);
    EXPECT_EQ(events[0]->AsMouse(), nullptr);
    EXPECT_EQ(events[1]->AsMouse(), &mouse);
    EXPECT_EQ(events[1]->AsKey(), nullptr);
    EXPECT_EQ(events[2]->AsKey(), &nav);
}

TEST(Events, GridKeyNavCarriesTheKeyMessageAndItsMove) {
    const oxdmEvtKey key(nullptr, 0x100, 9, 0x000F0001, 55, 3, 4);
    const oxdmEvtGridKeyNav nav("", "Price", oxdmEvtGridKeyNav::MoveRight, true, &key);
    EXPECT_EQ(nav.message, 0x100u);
    EXPECT_EQ(nav.wParam, 9u);
    EXPECT_EQ(nav.lParam, 0x000F0001);
    EXPECT_EQ(nav.time, 55u);
    EXPECT_EQ(nav.pt.y, 4);
    EXPECT_EQ(nav.fromColumn(), "");
    EXPECT_EQ(nav.toColumn(), "Price");
    EXPECT_TRUE(nav.SameRow());
    EXPECT_TRUE(oxdmEvtGridKeyNav().SameRow());
    const oxdmEvtGridKeyNav noKey("A", "B", oxdmEvtGridKeyNav::MoveLeft, false, nullptr);
    EXPECT_EQ(noKey.wParam, 0u);
    EXPECT_EQ(noKey.MoveDir(), oxdmEvtGridKeyNav::MoveLeft);
}

TEST(Events, MousePointComesFromTheHalvesOfLParam) {
    const std::intptr_t lParam = (static_cast<std::intptr_t>(0xFFFE) << 16) | 0x0123;  // y -2, x 291
    const oxdmEvtMouse mouse(nullptr, 0x201, 1, lParam);
    EXPECT_EQ(mouse.X(), 0x123);
    EXPECT_EQ(mouse.Y(), -2);
}

TEST(CallbackInfo, KeyAndMouseInfoCastTheEventOrAnswerNull) {
    const oxdmEvtKey key;
    const oxdmEvtMouse mouse;
    const oxdmEvtGridKeyNav nav;
    const oxdmEvent plain;
    auto info = [](const oxdmEvent* e) { return oxdmCallbackInfo(nullptr, nullptr, nullptr, nullptr, {}, e); };
    EXPECT_EQ(info(&key).KeyInfo(), &key);
    EXPECT_EQ(info(&nav).KeyInfo(), &nav);
    EXPECT_EQ(info(&mouse).KeyInfo(), nullptr);
    EXPECT_EQ(info(&mouse).MouseInfo(), &mouse);
    EXPECT_EQ(info(&plain).KeyInfo(), nullptr);
    EXPECT_EQ(info(nullptr).MouseInfo(), nullptr);
    EXPECT_EQ(info(nullptr).KeyInfo(), nullptr);
}

TEST(CallbackInfo, AppDataIsACountedShareOfTheSameObject) {
    oxBase::SmartPtr<oxdmAppEventData> data(new oxdmAppEventData);
    const oxdmCallbackInfo info(nullptr, nullptr, nullptr, nullptr, data, nullptr);
    const oxdmCallbackInfo copy = info;
    EXPECT_EQ(data.UseCount(), 3);
    const auto share = copy.AppData();
    EXPECT_EQ(share.get(), data.get());
    EXPECT_EQ(data.UseCount(), 4);
}

TEST(Operations, RedoDoesAgainAndPostingDoesNothing) {
    class Counting : public mvcOperation {
    public:
        Counting() : mvcOperation(true, false) {}
        void Do() override { ++done; }
        int done = 0;
    } op;
    op.Redo();
    EXPECT_EQ(op.done, 1);
    EXPECT_TRUE(op.IsUndoable());
    EXPECT_FALSE(op.IsRedoable());
    EXPECT_FALSE(op.Post());
    EXPECT_EQ(op.done, 1);
    EXPECT_EQ(mvcOperationEvent().Operation(), nullptr);
}

}  // namespace
