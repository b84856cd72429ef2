#pragma once
// Shared set-up of the persistent object tests: a customer database of
// four properties with rules, sets opened on it, and a buffer link that
// records what the bridge asks of its buffer.

#include <memory>
#include <vector>

#include "oxdm/cursor/objects/memory_database.h"
#include "oxdm/cursor/objects/memory_set.h"
#include "oxdm/cursor/objects/po_buffer_link.h"
#include "oxdm/cursor/objects/type_converters.h"
#include "oxdm/notify/callback_mgr.h"

namespace po_test {

inline oxPOPropertySpec Property(const char* name, int type) {
    oxPOPropertySpec spec;
    spec.name = name;
    spec.type = type;
    return spec;
}

// Name (text, the key, required), City (text), Balance (double, two
// decimals, never negative), Kind (Retail or Wholesale).
inline std::vector<oxPOPropertySpec> CustomerProperties() {
    oxPOPropertySpec name = Property("Name", POTypeText);
    name.key = true;
    name.rule = [](const ATL::CComVariant& v, CString& why) {
        if (v.vt == VT_BSTR && !v.Text().IsEmpty()) return true;
        why = "A name is required";
        return false;
    };
    oxPOPropertySpec city = Property("City", POTypeText);
    oxPOPropertySpec balance = Property("Balance", POTypeDouble);
    balance.decimals = 2;
    balance.defaultValue = ATL::CComVariant(0.0);
    balance.rule = [](const ATL::CComVariant& v, CString& why) {
        double d = 0;
        if (!v.AsNumber(&d) || d >= 0) return true;
        why = "The balance can't be negative";
        return false;
    };
    oxPOPropertySpec kind = Property("Kind", POTypeChoice);
    kind.choices = {"Retail", "Wholesale"};
    kind.defaultValue = ATL::CComVariant(std::int32_t{1});
    return {name, city, balance, kind};
}

// Clark of Boston (balance 10), Adams of Denver (20), Baker of Austin (30),
// all retail.
inline void AddCustomers(oxPOObjectStorage& db) {
    const char* rows[][2] = {{"Clark", "Boston"}, {"Adams", "Denver"}, {"Baker", "Austin"}};
    double amount = 10;
    for (auto& row : rows) {
        db.Insert({ATL::CComVariant(row[0]), ATL::CComVariant(row[1]), ATL::CComVariant(amount),
                   ATL::CComVariant(std::int32_t{1})});
        amount += 10;
    }
}

inline std::shared_ptr<oxPOMemoryDatabase> Customers() {
    auto db = std::make_shared<oxPOMemoryDatabase>(CustomerProperties());
    AddCustomers(*db);
    return db;
}

inline ATL::CComPtr<oxPOMemorySet> Open(const std::shared_ptr<oxPOObjectStorage>& db,
                                        std::vector<CString> sort = {"Name"}) {
    return ATL::CComPtr<oxPOMemorySet>(new oxPOMemorySet(db, sort));
}

// The set as the cursor is given it.
inline IUnknown* AsUnknown(oxPOMemorySet* set) { return static_cast<IPersistentObjectSet*>(set); }

// A buffer as the bridge sees it: it keeps the merged callbacks so a test
// can raise them as the buffer would, and counts what it is asked.
class FakeBuffer : public oxdmPOBufferLink {
public:
    oxdmBufferedFileDataSource* Source() override { return nullptr; }
    const CString& NodeLabel() const override { return label; }
    oxdmControlMgr* RootControlMgr() override { return nullptr; }
    void MergeCallbacks(const oxdmCallbackMgr& merged) override {
        callbacks.Merge(merged.RowCallbacks());
        callbacks.Merge(merged.ColCallbacks());
    }
    bool EditedCell(const oxdmCallbackInfo*, CString& column, const oxData*& value) const override {
        column = editColumn;
        value = editValue;
        return editValue != nullptr;
    }
    bool IsNewRow() const override { return newRow; }
    short IndexForColumn(const CString& name) const override {
        for (size_t i = 0; i < names.size(); ++i)
            if (names[i] == name) return static_cast<short>(i);
        return -1;
    }
    void SetReadOnly(short column, bool readOnly) override { readOnlyCalls.emplace_back(column, readOnly); }
    void MoveCursorToFocus() override {}
    void RefreshCell(short column) override { refreshed.push_back(column); }
    void SendColInvalid(short column) override { invalid.push_back(column); }
    void Refetch() override { ++refetches; }
    bool CanDelete() const override { return true; }
    void ReQuery() override { ++requeries; }
    long NumWindowDataRows() const override { return rows; }
    bool AppendRow() override { return ++appends, true; }

    // Raises a column callback of `column` with the value being entered.
    int Column(const CString& column, oxdmColCallbacks::Item item, const oxData& value) {
        editColumn = column;
        editValue = &value;
        const auto* entry = callbacks.ColCallbacks().GetCallbacks(column);
        const int answer = entry != nullptr && !(*entry)[item].IsEmpty() ? (*entry)[item](nullptr) : 0;
        editValue = nullptr;
        return answer;
    }
    int Row(oxdmRowCallbacks::Item item) {
        const auto* entry = callbacks.RowCallbacks().GetCallbacks(label);
        return entry != nullptr && !(*entry)[item].IsEmpty() ? (*entry)[item](nullptr) : 0;
    }

    CString label = "Customers";
    std::vector<CString> names = {"Name", "City", "Balance", "Kind"};
    oxdmCallbackMgr callbacks{nullptr};
    bool newRow = false;
    long rows = 3;
    int requeries = 0, appends = 0, refetches = 0;
    std::vector<short> refreshed, invalid;
    std::vector<std::pair<short, bool>> readOnlyCalls;

private:
    CString editColumn;
    const oxData* editValue = nullptr;
};

}  // namespace po_test
