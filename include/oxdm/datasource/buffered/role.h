#pragma once
// oxdmBufferedDataSourceRole: the strategy that a buffer asks about the
// events no callback answered. The plain role answers 0 to everything; an
// application installs its own with SetRole.

#include "oxdm/datasource/data_source.h"

class oxdmEvent;

class oxdmBufferedDataSourceRole {
public:
    virtual ~oxdmBufferedDataSourceRole() = default;
    virtual int DoHandleRowEvent(oxdmDataSource::Event, oxdmEvent*) { return 0; }
    virtual int DoHandleColEvent(oxdmDataSource::Event, short, oxdmDSCellOnFocusRow*) { return 0; }
};
