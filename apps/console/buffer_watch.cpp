#include "buffer_watch.h"

#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"

BufferWatch::BufferWatch(oxdmBufferedFileDataSource& buffer) : buffer_(buffer) {
    for (short code : {oxdmDataSource::DSFocusChanged, oxdmDataSource::DSRowDeleted, oxdmDataSource::DSRowStateChanged})
        buffer_.AddObserver(code, id_, CBFunctor1<mvcChange*>([this](mvcChange* change) { OnChange(change); }));
}

BufferWatch::~BufferWatch() { mvcChangeMgr::Instance()->UnregisterAll(id_); }

void BufferWatch::OnChange(mvcChange* change) {
    switch (change->Event()) {
        case oxdmDataSource::DSFocusChanged:
            ++focusMoves_;
            break;
        case oxdmDataSource::DSRowDeleted:
            ++deletes_;
            break;
        default:
            if (const auto* state = dynamic_cast<const oxdmRowStateChange*>(change)) {
                if (state->Cause() == oxdmRowStateChange::CauseRowInserted ||
                    state->Cause() == oxdmRowStateChange::CauseRowValidated)
                    ++saves_;
            }
    }
}
