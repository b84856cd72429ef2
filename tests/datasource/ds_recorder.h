#pragma once
// Test helpers for data sources.
//
// DSRecorder subscribes to every change code of a data source and appends a
// line per change ("change 6 dirty=1 cause=4"); callbacks made with
// Callback() append to the same log ("callback RowValidate"), so a test can
// read the order of both mechanisms.
//
// DSChecker rides along on every change of a memory table and re-checks its
// invariants, recording the first violation it sees.

#include <string>
#include <vector>

#include "oxdm/datasource/data_source.h"
#include "oxdm/datasource/mem_data_source.h"
#include "oxdm/notify/callback.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"

class DSRecorder {
public:
    explicit DSRecorder(oxdmDataSource& source) {
        for (short code = oxdmDataSource::DSAllChanged; code <= oxdmDataSource::DSNeedsRefetch; ++code) {
            source.AddObserver(code, id, CBFunctor1<mvcChange*>([this](mvcChange* change) { Record(change); }));
        }
    }
    ~DSRecorder() { mvcChangeMgr::Instance()->UnregisterAll(id); }
    DSRecorder(const DSRecorder&) = delete;
    DSRecorder& operator=(const DSRecorder&) = delete;

    // A callback that logs its name and answers answer.
    CBFunctor1wRet<oxdmCallbackInfo*, int> Callback(const std::string& name, int answer = 0) {
        return CBFunctor1wRet<oxdmCallbackInfo*, int>([this, name, answer](oxdmCallbackInfo*) {
            log.push_back("callback " + name);
            return answer;
        });
    }

    int Count(short code) const {
        int n = 0;
        for (short c : codes) n += c == code ? 1 : 0;
        return n;
    }
    void Clear() {
        log.clear();
        codes.clear();
    }

    unsigned long id = 0;
    std::vector<std::string> log;
    std::vector<short> codes;

private:
    void Record(mvcChange* change) {
        std::string line = "change " + std::to_string(change->Event());
        if (auto* state = dynamic_cast<oxdmRowStateChange*>(change)) {
            line += " dirty=" + std::to_string(state->Dirty()) + " cause=" + std::to_string(state->Cause());
        } else if (auto* col = dynamic_cast<mvcColChange*>(change)) {
            line += " col=" + std::to_string(col->Col());
        } else if (auto* row = dynamic_cast<mvcRowChange*>(change)) {
            line += " row=" + std::to_string(row->Row());
        }
        log.push_back(line);
        codes.push_back(change->Event());
    }
};

class DSChecker {
public:
    explicit DSChecker(oxdmMemDataSource& source) : source_(source) {
        for (short code = oxdmDataSource::DSAllChanged; code <= oxdmDataSource::DSNeedsRefetch; ++code) {
            source.AddObserver(code, id_, CBFunctor1<mvcChange*>([this](mvcChange*) { Check(); }));
        }
    }
    ~DSChecker() { mvcChangeMgr::Instance()->UnregisterAll(id_); }
    DSChecker(const DSChecker&) = delete;
    DSChecker& operator=(const DSChecker&) = delete;

    // Empty while every check passed; else the first violation.
    const std::string& Failure() const { return failure_; }
    int Checks() const { return checks_; }

    void Check() {
        ++checks_;
        const long total = source_.GetRelativeRow(0) == -1 ? 0 : CountRows();
        for (long relative = 0; relative < total; ++relative) {
            const long absolute = source_.GetAbsoluteRow(relative);
            if (absolute < 0 || absolute >= total || source_.GetRelativeRow(absolute) != relative) {
                return Fail("display and storage order are not inverse at " + std::to_string(relative));
            }
        }
        const long focus = source_.FocusRowAbsolute();
        if (source_.HasFocusRow() != (focus != -1)) return Fail("HasFocusRow disagrees with the focus row");
        if (focus < -1 || focus >= total) return Fail("focus row out of the table");
        if (focus == -1 && source_.FocusRow() != -1) return Fail("window focus without a focus row");
        if (source_.NumWindowDataRows() > source_.WindowSize()) return Fail("more window rows than the window");
        if (source_.IsNewRow() && source_.GetRelativeRow(focus) != total - 1) return Fail("new row not last");
        if (!source_.HasFocusRow() && source_.IsNewRow()) return Fail("new row without focus");
    }

private:
    long CountRows() const {
        long n = 0;
        while (source_.GetRelativeRow(n) != -1) ++n;
        return n;
    }
    void Fail(const std::string& what) {
        if (failure_.empty()) failure_ = what;
    }

    oxdmMemDataSource& source_;
    unsigned long id_ = 0;
    std::string failure_;
    int checks_ = 0;
};
