#include "oxdm/notify/callback_maps.h"

#include <array>

#include "oxdm/notify/control.h"

namespace {

template <std::size_t N>
int Lookup(const std::array<int, N>& table, int item) {
    return item >= 0 && static_cast<std::size_t>(item) < N ? table[static_cast<std::size_t>(item)] : -1;
}

// oxdmDataSource::Event numbers fed by the row map's items.
constexpr std::array<int, oxdmRowCallbacks::SlotCount> kRowItemEvent = {
    0,   // RowValidate
    1,   // RowBeforeWrite
    2,   // RowAfterWrite
    3,   // RowBeforeDelete
    4,   // RowAfterDelete
    5,   // RowBeforeRevert
    6,   // RowAfterRevert
    9,   // FocusRowMoved
    7,   // RowDirtyChanged
    14,  // RowFilter
    11,  // RowInsertFailed
    10,  // RowUpdateFailed
    12,  // RowDeleteFailed
    13,  // BeforeReQuery
};

// Column events of a data source (ColBeforeChange, ColAfterChange,
// ColValidate) fed by the column map's first three items.
constexpr std::array<int, oxdmColCallbacks::SlotCount> kColItemDataSourceEvent = {
    15, 16, 17, -1, -1, -1, -1, -1, -1, -1};

constexpr std::array<int, oxdmColCallbacks::SlotCount> kColItemControlEvent = {
    -1,
    -1,
    -1,
    oxdmControl::ctrlFocusGained,
    oxdmControl::ctrlFocusLost,
    oxdmControl::ctrlMouseClick,
    oxdmControl::ctrlMouseDblClick,
    oxdmControl::ctrlKeyDown,
    oxdmControl::ctrlKeyPressed,
    oxdmControl::ctrlColChanging,
};

constexpr std::array<int, oxdmCtrlCallbacks::SlotCount> kCtrlItemControlEvent = {
    oxdmControl::ctrlBeforeUpdate,
    oxdmControl::ctrlAfterUpdate,
    oxdmControl::ctrlFocusGained,
    oxdmControl::ctrlFocusLost,
    oxdmControl::ctrlMouseClick,
    oxdmControl::ctrlMouseDblClick,
    -1,  // the key-down slot: nothing reads it
    oxdmControl::ctrlKeyPressed,
    oxdmControl::ctrlClass0,
    oxdmControl::ctrlClass1,
    oxdmControl::ctrlClass2,
    oxdmControl::ctrlClass3,
    oxdmControl::ctrlClass4,
    oxdmControl::ctrlClass5,
};

}  // namespace

int oxdmRowCallbacks::DataSourceEvent(int item) { return Lookup(kRowItemEvent, item); }

int oxdmColCallbacks::DataSourceEvent(int item) { return Lookup(kColItemDataSourceEvent, item); }

int oxdmColCallbacks::ControlEvent(int item) { return Lookup(kColItemControlEvent, item); }

int oxdmCtrlCallbacks::ControlEvent(int item) { return Lookup(kCtrlItemControlEvent, item); }
