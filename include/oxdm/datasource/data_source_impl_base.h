#pragma once
// oxdmDataSourceImplBase: what both families of data sources keep behind
// their interface object: the window size and scroll answers, the silent
// delete flag, the window size cache and the cancel callback.
//
// Invariants and ownership:
//   - owner_ is the interface object this implementation serves; it is not
//     owned, and every change goes out through it (it is the subject).
//   - lastSetWindowSize_ is -1 when nothing is cached.
//   - cancelArgument_ is stored and copied only; nothing reads it.
// Copying copies every field, the owner included.

#include "oxdm/base/functor.h"
#include "oxdm/datasource/data_source.h"

class oxdmEvent;

class oxdmDataSourceImplBase {
public:
    explicit oxdmDataSourceImplBase(oxdmDataSource* owner) : owner_(owner) {}
    oxdmDataSourceImplBase(const oxdmDataSourceImplBase&) = default;
    oxdmDataSourceImplBase& operator=(const oxdmDataSourceImplBase&) = default;
    virtual ~oxdmDataSourceImplBase() = default;

    // Moves the focus to the window row; the concrete family decides how.
    virtual void DoSetFocus(short row) = 0;
    // Delivers a row event (0 to 14) and answers the callbacks' verdict.
    virtual int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) = 0;
    // Delivers a column event (15 to 17) for one column.
    virtual int DoHandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) = 0;

    // DoSetFocus, then DSFocusChanged with the given pair, then the row
    // event FocusRowMoved.
    void SetFocus(short row, unsigned long initiator, bool notifyInitiator);
    int HandleRowEvent(oxdmDataSource::Event event, oxdmEvent* msg) { return DoHandleRowEvent(event, msg); }
    int HandleColEvent(oxdmDataSource::Event event, short col, oxdmDSCellOnFocusRow* cell) {
        return DoHandleColEvent(event, col, cell);
    }

    // Sets the flag and answers its former value, so that a caller can
    // restore it.
    bool SilentDelete(bool silent);
    bool IsSilentDelete() const { return silentDelete_; }

    short WindowSize() const { return windowSize_; }
    bool CanScrollUp() const { return canScrollUp_; }
    bool CanScrollDown() const { return canScrollDown_; }
    bool IsCachingLastWindowSize() const { return cacheSetWindowSize_; }
    short LastSetWindowSize() const { return lastSetWindowSize_; }
    void CacheSetWindowSize(bool cache) { cacheSetWindowSize_ = cache; }
    void ClearLastWindowSizeCache() { lastSetWindowSize_ = -1; }
    void SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument);

    oxdmDataSource* Owner() const { return owner_; }

protected:
    oxdmDataSource* owner_;
    short windowSize_ = 0;
    bool canScrollUp_ = false;
    bool canScrollDown_ = false;
    bool silentDelete_ = false;
    bool cacheSetWindowSize_ = false;
    short lastSetWindowSize_ = -1;
    CBFunctor0wRet<int> cancelCallback_;
    int cancelArgument_ = 0;
    int lastCancelAnswer_ = oxdmDataSource::QueryContinue;
};
