#include "oxdm/datasource/mem_data_source.h"

#include "oxdm/notify/change.h"

void oxdmMemDataSource::SupressNotification(bool suppress) {
    if (suppress == IsNotificationSupressed()) return;
    oxdmDataSource::SupressNotification(suppress);
    if (suppress) return;
    for (short col = 0; col < NumColumns(); ++col) {
        Notify(new mvcColChange(col, this, DSColReadOnlyChanged, 0, true), false);
    }
    Notify(new mvcChange(this, DSAllChanged, 0, true), false);
}
