#include "oxdm/notify/change_list.h"

#include "oxdm/notify/change.h"

void mvcChangeList::Notify(bool deferred) {
    for (size_type i = 0; i < size(); ++i) (*this)[i]->Notify(deferred);
}
