#pragma once
// Stand-ins for the higher layers that query columns and filters talk to: a
// live-column factory that records what it was asked to make, and a data
// source of named values that compares as the live columns do (by Eq and
// Lt of the values).

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "oxdm/base/exception.h"
#include "oxdm/common/values/data.h"
#include "oxdm/query/filter.h"
#include "oxdm/query/live_columns.h"
#include "record_test_support.h"

// Records each request as a line of text; answers distinct fake column
// pointers (never dereferenced) and serves one open file for every table.
class RecordingLiveColumns : public oxdmLiveColumnFactory {
public:
    explicit RecordingLiveColumns(const oxioDataFile* file = nullptr) : file_(file) {
        former_ = oxdmSetLiveColumnFactory(this);
    }
    ~RecordingLiveColumns() override { oxdmSetLiveColumnFactory(former_); }

    std::vector<std::string> calls;

    oxdmDSColumnBase* NewColumn(const CString& id, oxdmBufferedFileDataSource&, int style,
                                const oxData* value) override {
        return Made("column " + id.str() + " style " + std::to_string(style) + " default '" +
                    value->Format().str() + "'");
    }
    oxdmDSColumnBase* NewCursorColumn(const oxdmColumnDef*, const CString& id, oxdmBufferedFileDataSource&,
                                      int style, const oxData*) override {
        return Made("cursor " + id.str() + " style " + std::to_string(style));
    }
    oxdmDSColumnBase* NewVoidColumn(const CString& id, oxdmBufferedFileDataSource&, const oxData*,
                                    const CString& fileName) override {
        return Made("void " + id.str() + " of " + fileName.str());
    }
    oxdmDSColumnBase* NewCallbackColumn(const ColumnCB& read, const ColumnCB&, const CString& id,
                                        oxdmBufferedFileDataSource&, int, const oxData*) override {
        return Made("callback " + id.str() + (read ? " with read" : ""));
    }
    oxdmDSColumnBase* NewAttachmentsColumn(const CString& id, oxdmBufferedFileDataSource&, const oxdmTableDef*,
                                           int style) override {
        return Made("attachments " + id.str() + " style " + std::to_string(style));
    }
    const oxioDataFile& TableFile(oxdmBufferedFileDataSource&, const oxdmTableDef*) override {
        if (file_ == nullptr) throw oxdmException("no file");
        return *file_;
    }
    void SetPrefillValue(oxdmDSColumnBase&, const oxData& value) override {
        calls.push_back("prefill '" + value.Format().str() + "'");
    }
    void SetChoices(oxdmDSColumnBase&, const std::vector<CString>& choices) override {
        calls.push_back("choices " + std::to_string(choices.size()));
    }
    void SetAutoHideFilter(oxdmDSColumnBase&, const oxdmFilter& filter) override {
        calls.push_back("filter of " + std::to_string(filter.Items().size()));
    }
    void SetValueWhenHidden(oxdmDSColumnBase&, const oxData& value) override {
        calls.push_back("hidden '" + value.Format().str() + "'");
    }

    // A stand-in source; only its address is passed around.
    oxdmBufferedFileDataSource& Source() { return *reinterpret_cast<oxdmBufferedFileDataSource*>(&sourceTag_); }

private:
    oxdmDSColumnBase* Made(const std::string& call) {
        calls.push_back(call);
        return reinterpret_cast<oxdmDSColumnBase*>(&made_[calls.size() % 8]);
    }

    const oxioDataFile* file_;
    oxdmLiveColumnFactory* former_;
    char made_[8] = {};
    char sourceTag_ = 0;
};

// Columns of values by id; a column's focus-row value may differ from its
// current value. Unknown ids throw, as a data source does.
class ValueSource : public oxdmFilterSource {
public:
    void Set(const std::string& id, const oxData& current) { Set(id, current, current); }
    void Set(const std::string& id, const oxData& current, const oxData& focus) {
        columns_[id] = std::make_unique<Column>(current, focus);
    }
    const oxdmFilterColumn& FilterColumn(const CString& id) const override {
        auto found = columns_.find(id.str());
        if (found == columns_.end()) throw oxdmException("No column " + id);
        return *found->second;
    }

private:
    class Column : public oxdmFilterColumn {
    public:
        Column(const oxData& current, const oxData& focus) : current_(current.Clone()), focus_(focus.Clone()) {}
        const oxData& FilterValue(bool fromFocusRow) const override { return fromFocusRow ? *focus_ : *current_; }
        bool EQ(const oxData& a, const oxData& b) const override { return a.Eq(b); }
        bool NE(const oxData& a, const oxData& b) const override { return !EQ(a, b); }
        bool GE(const oxData& a, const oxData& b) const override { return !a.Lt(b); }
        bool LE(const oxData& a, const oxData& b) const override { return a.Lt(b) || a.Eq(b); }
        bool GT(const oxData& a, const oxData& b) const override { return !a.Lt(b) && !a.Eq(b); }
        bool LT(const oxData& a, const oxData& b) const override { return a.Lt(b); }

    private:
        std::unique_ptr<oxData> current_;
        std::unique_ptr<oxData> focus_;
    };
    std::map<std::string, std::unique_ptr<Column>> columns_;
};
