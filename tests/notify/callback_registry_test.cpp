// The keyed callback maps, the shared callback manager, and the item tables
// that decide which event a registered functor feeds when an object binds.
#include <gtest/gtest.h>

#include <array>

#include "oxdm/notify/callback.h"
#include "oxdm/notify/callback_mgr.h"
#include "oxdm/notify/control.h"

namespace {

using Functor = oxdmCallback::Functor;

Functor Returns(int value) {
    return Functor([value](oxdmCallbackInfo*) { return value; });
}

// Answers of every slot of an entry: 0 for an empty slot.
template <class Entry>
std::vector<int> Answers(const Entry* entry) {
    std::vector<int> out;
    for (const auto& f : *entry) out.push_back(f.IsEmpty() ? 0 : f(nullptr));
    return out;
}

TEST(CallbackMaps, SetCallbackMakesAFullEntryAndOverwritesOneSlot) {
    oxdmRowCallbacks rows;
    EXPECT_EQ(rows.GetCallbacks("Customer"), nullptr);
    rows.SetCallback("Customer", oxdmRowCallbacks::cbRowAfterWrite, Returns(1));
    rows.SetCallback("Customer", oxdmRowCallbacks::cbRowAfterWrite, Returns(2));
    rows.SetCallback("Customer", oxdmRowCallbacks::cbBeforeReQuery, Returns(3));
    const auto* entry = rows.GetCallbacks("Customer");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(Answers(entry), (std::vector<int>{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3}));
    EXPECT_EQ(rows.GetCallbacks("customer"), nullptr);  // keys are case-sensitive
}

TEST(CallbackMaps, MergeIsByKeyAndTheReceiverKeepsItsWholeEntry) {
    oxdmColCallbacks mine, theirs;
    mine.SetCallback("Name", oxdmColCallbacks::cbColValidate, Returns(1));
    theirs.SetCallback("Name", oxdmColCallbacks::cbColBeforeChange, Returns(2));
    theirs.SetCallback("Name", oxdmColCallbacks::cbColValidate, Returns(3));
    theirs.SetCallback("City", oxdmColCallbacks::cbColAfterChange, Returns(4));
    mine.Merge(theirs);
    EXPECT_EQ(Answers(mine.GetCallbacks("Name")), (std::vector<int>{0, 0, 1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Answers(mine.GetCallbacks("City")), (std::vector<int>{0, 4, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Answers(theirs.GetCallbacks("Name")), (std::vector<int>{2, 0, 3, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(CallbackMgr, CopiesShareOneRegistry) {
    oxdmCallbackMgr mgr(nullptr);
    oxdmCallbackMgr copy(mgr);
    copy.SetRowCallback("Order", oxdmRowCallbacks::cbRowValidate, Returns(778));
    copy.SetColCallback("Qty", oxdmColCallbacks::cbColValidate, Returns(5));
    copy.SetCtrlCallback(12, oxdmCtrlCallbacks::cbClass3, Returns(6));
    auto data = oxBase::SmartPtr<oxdmAppEventData>(new oxdmAppEventData);
    copy.SetAppData(data);

    ASSERT_NE(mgr.RowCallbacks().GetCallbacks("Order"), nullptr);
    EXPECT_EQ((*mgr.RowCallbacks().GetCallbacks("Order"))[0](nullptr), 778);
    EXPECT_EQ((*mgr.ColCallbacks().GetCallbacks("Qty"))[2](nullptr), 5);
    EXPECT_EQ((*mgr.CtrlCallbacks().GetCallbacks(12))[11](nullptr), 6);
    EXPECT_EQ(mgr.AppData().get(), data.get());
    EXPECT_EQ(mgr.RootControlMgr(), nullptr);
}

TEST(CallbackMgr, MergingMapsIntoTheManagerKeepsItsEntries) {
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetCtrlCallback(1, oxdmCtrlCallbacks::cbFocusLost, Returns(1));
    oxdmCtrlCallbacks other;
    other.SetCallback(1, oxdmCtrlCallbacks::cbFocusGained, Returns(2));
    other.SetCallback(2, oxdmCtrlCallbacks::cbFocusGained, Returns(3));
    mgr.Merge(other);
    EXPECT_TRUE((*mgr.CtrlCallbacks().GetCallbacks(1))[oxdmCtrlCallbacks::cbFocusGained].IsEmpty());
    EXPECT_EQ((*mgr.CtrlCallbacks().GetCallbacks(2))[oxdmCtrlCallbacks::cbFocusGained](nullptr), 3);
}

// Binding as a control with callback chains does it: the control map's
// entry for the user id, each slot added with += to the chain its table
// names. A user id of 0 takes nothing.
std::array<oxdmCallback, oxdmControl::CtrlEventCount> BindControl(const oxdmCallbackMgr& mgr,
                                                                  unsigned short userId) {
    std::array<oxdmCallback, oxdmControl::CtrlEventCount> chains;
    const auto* entry = userId ? mgr.CtrlCallbacks().GetCallbacks(userId) : nullptr;
    if (!entry) return chains;
    for (int item = 0; item < oxdmCtrlCallbacks::SlotCount; ++item) {
        const int event = oxdmCtrlCallbacks::ControlEvent(item);
        if (event >= 0) chains[static_cast<size_t>(event)] += (*entry)[static_cast<size_t>(item)];
    }
    return chains;
}

TEST(CallbackBinding, KeyDownCannotBeSetThroughTheControlMap) {
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetCtrlCallback(7, oxdmCtrlCallbacks::cbKeyDown, Returns(1));
    mgr.SetCtrlCallback(7, oxdmCtrlCallbacks::cbKeyPressed, Returns(2));
    mgr.SetCtrlCallback(7, oxdmCtrlCallbacks::cbClass5, Returns(3));
    const auto chains = BindControl(mgr, 7);
    EXPECT_FALSE(chains[oxdmControl::ctrlKeyDown]);
    EXPECT_EQ(chains[oxdmControl::ctrlKeyPressed](nullptr), 2);
    EXPECT_EQ(chains[oxdmControl::ctrlClass5](nullptr), 3);
    int bound = 0;
    for (const auto& chain : chains) bound += static_cast<int>(chain.size());
    EXPECT_EQ(bound, 2);  // the key-down functor went nowhere
}

TEST(CallbackBinding, BoundChainsAreCopiesAndIgnoreLaterRegistrations) {
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetCtrlCallback(4, oxdmCtrlCallbacks::cbBeforeUpdate, Returns(1));
    const auto chains = BindControl(mgr, 4);
    mgr.SetCtrlCallback(4, oxdmCtrlCallbacks::cbBeforeUpdate, Returns(9));
    mgr.SetCtrlCallback(4, oxdmCtrlCallbacks::cbAfterUpdate, Returns(9));
    EXPECT_EQ(chains[oxdmControl::ctrlBeforeUpdate](nullptr), 1);
    EXPECT_FALSE(chains[oxdmControl::ctrlAfterUpdate]);
    mgr.SetCtrlCallback(0, oxdmCtrlCallbacks::cbBeforeUpdate, Returns(1));
    for (const auto& chain : BindControl(mgr, 0)) EXPECT_FALSE(chain);
}

TEST(CallbackBinding, ItemTablesMatchTheEventsTheyFeed) {
    // The row map is not the identity: items 7 to 11 are shuffled.
    const std::array<int, 14> rowEvents = {0, 1, 2, 3, 4, 5, 6, 9, 7, 14, 11, 10, 12, 13};
    for (int item = 0; item < 14; ++item)
        EXPECT_EQ(oxdmRowCallbacks::DataSourceEvent(item), rowEvents[static_cast<size_t>(item)]) << item;
    EXPECT_EQ(oxdmRowCallbacks::DataSourceEvent(14), -1);
    EXPECT_EQ(oxdmRowCallbacks::DataSourceEvent(-1), -1);

    // The column map swaps key down and key pressed relative to its order.
    EXPECT_EQ(oxdmColCallbacks::DataSourceEvent(oxdmColCallbacks::cbColValidate), 17);
    EXPECT_EQ(oxdmColCallbacks::DataSourceEvent(oxdmColCallbacks::cbFocusGained), -1);
    EXPECT_EQ(oxdmColCallbacks::ControlEvent(oxdmColCallbacks::cbColBeforeChange), -1);
    EXPECT_EQ(oxdmColCallbacks::ControlEvent(oxdmColCallbacks::cbKeyDown), oxdmControl::ctrlKeyDown);
    EXPECT_EQ(oxdmColCallbacks::ControlEvent(oxdmColCallbacks::cbKeyPressed), oxdmControl::ctrlKeyPressed);
    EXPECT_EQ(oxdmColCallbacks::ControlEvent(oxdmColCallbacks::cbColChanging), oxdmControl::ctrlColChanging);
    EXPECT_EQ(oxdmColCallbacks::ControlEvent(10), -1);

    EXPECT_EQ(oxdmCtrlCallbacks::ControlEvent(oxdmCtrlCallbacks::cbClass0), oxdmControl::ctrlClass0);
    EXPECT_EQ(oxdmCtrlCallbacks::ControlEvent(14), -1);
}

TEST(CallbackBinding, PlainControlTakesNoCallbacks) {
    class Plain : public oxdmControl {} control;
    control.SetCallback(oxdmControl::ctrlDraw, oxdmCallback(Returns(1)));
    control.ClearCallbacks();
    EXPECT_EQ(control.MakeCallbackInfo(nullptr, {}, &control, nullptr), nullptr);
    EXPECT_EQ(control.MakeCallbackInfo(nullptr, {}), nullptr);
}

}  // namespace
