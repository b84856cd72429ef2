#include "oxdm/cursor/objects/po_property_column.h"

#include <cassert>

#include "oxdm/common/fieldcode/allocate_formatter.h"
#include "oxdm/query/live_columns.h"
#include "oxdm/record/column_def.h"

oxdmPOPropertyColumn::oxdmPOPropertyColumn(const oxdmColumnDef* column)
    : oxdmColumnBase(column->Name()), column_(column), columnId_(column->Name()) {
    assert(column != nullptr);
}

oxdmDSColumnBase* oxdmPOPropertyColumn::BuildColumn(oxdmBufferedFileDataSource& source) const {
    return CreateColumn(source);
}

oxdmDSColumnBase* oxdmPOPropertyColumn::CreateColumn(oxdmBufferedFileDataSource& source) const {
    return oxdmLiveColumns().NewCursorColumn(column_, ID(), source, style_, &DefaultValue());
}

oxEditFormatter* oxdmPOPropertyColumn::BuildFormatter() const {
    const xio_fld_def def = column_->FldDef();
    return AllocateFormatter(def);
}

oxData* oxdmPOPropertyColumn::CreateDefaultValue() const { return column_->CreateData(); }
CString oxdmPOPropertyColumn::CreateLabel() const { return column_->Desc(true); }
CString oxdmPOPropertyColumn::Name() const { return column_->Name(); }
CString oxdmPOPropertyColumn::Desc() const { return column_->Desc(true); }
short oxdmPOPropertyColumn::Type() const { return column_->Type(); }
unsigned short oxdmPOPropertyColumn::Length() const { return column_->Length(); }
short oxdmPOPropertyColumn::Decimal() const { return column_->Decimal(); }
bool oxdmPOPropertyColumn::Key() const { return column_->Key(); }
short oxdmPOPropertyColumn::Code() const { return column_->Code(); }
bool oxdmPOPropertyColumn::Commas() const { return column_->FldDef().commas != 0; }
bool oxdmPOPropertyColumn::Capitalize() const { return column_->Capitalize(); }
bool oxdmPOPropertyColumn::RightJustify() const { return column_->RightJustify(); }
bool oxdmPOPropertyColumn::Formatted() const { return column_->FldDef().formatted != 0; }
bool oxdmPOPropertyColumn::MonthYear() const { return column_->FldDef().month_year != 0; }
bool oxdmPOPropertyColumn::Required() const { return column_->FldDef().required != 0; }
unsigned short oxdmPOPropertyColumn::SectionNum() const { return column_->FldDef().section; }
unsigned short oxdmPOPropertyColumn::LabelBreak() const { return column_->FldDef().label_break; }
unsigned short oxdmPOPropertyColumn::DefaultWidth() const { return column_->DefaultWidth(); }
unsigned short oxdmPOPropertyColumn::MinHeadWidth() const { return column_->MinHeadWidth(); }
bool oxdmPOPropertyColumn::Stamp() const {
    return column_->FldDef().first_stamp != 0 || column_->FldDef().second_stamp != 0;
}
int oxdmPOPropertyColumn::DefaultGridColumnWidth() const { return DefaultWidth() * 4; }
bool oxdmPOPropertyColumn::MultilineText() const { return column_->FldDef().multi_line > 0; }
bool oxdmPOPropertyColumn::HasChoices() const { return column_->FldDef().has_choices > 0; }

const std::vector<CString>& oxdmPOPropertyColumn::Choices() const {
    if (const auto* choice = dynamic_cast<const oxdmChoiceColumnDef*>(column_)) return choice->Choices();
    return oxdmColumnBase::Choices();
}

void oxdmPOPropertyColumn::SetChoices(const std::vector<CString>&) {}
