#include "oxdm/datasource/data_source_impl_base.h"

#include <utility>

#include "oxdm/notify/change.h"

void oxdmDataSourceImplBase::SetFocus(short row, unsigned long initiator, bool notifyInitiator) {
    DoSetFocus(row);
    owner_->Notify(new mvcChange(owner_, oxdmDataSource::DSFocusChanged, initiator, notifyInitiator), false);
    HandleRowEvent(oxdmDataSource::FocusRowMoved, nullptr);
}

bool oxdmDataSourceImplBase::SilentDelete(bool silent) { return std::exchange(silentDelete_, silent); }

void oxdmDataSourceImplBase::SetCancelQueryCallback(CBFunctor0wRet<int>& callback, int argument) {
    cancelCallback_ = callback;
    cancelArgument_ = argument;
}
