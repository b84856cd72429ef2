#include "oxdm/query/table_column.h"

#include <cassert>

#include "oxdm/base/exception.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/fieldcode/allocate_formatter.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/query/live_columns.h"
#include "oxdm/query/query_node.h"
#include "oxdm/record/table_def.h"

oxdmTableColumnQueryColumn::oxdmTableColumnQueryColumn(const oxdmColumnDef* column, const CString& id, int style)
    : oxdmQueryColumnBase(id, style), column_(column), columnID_(column->Name()) {
    assert(column != nullptr);
}

oxdmTableColumnQueryColumn::oxdmTableColumnQueryColumn(const oxdmColumnDef* column, int style)
    : oxdmTableColumnQueryColumn(column, column->Name(), style) {}

oxdmTableColumnQueryColumn::oxdmTableColumnQueryColumn(const CString& name, int style)
    : oxdmTableColumnQueryColumn(name, name, style) {}

oxdmTableColumnQueryColumn::oxdmTableColumnQueryColumn(const CString& name, const CString& id, int style)
    : oxdmQueryColumnBase(id, style), column_(nullptr), columnID_(name) {}

const oxdmColumnDef* oxdmTableColumnQueryColumn::Column() const {
    if (column_ == nullptr) {
        if (Node() == nullptr) {
            throw oxdmException(
                "oxdmColumnDef unknown.  oxdmTableColumnQueryColumn must be added to oxdmQueryNode first");
        }
        column_ = Node()->Table()->Column(columnID_);
    }
    return column_;
}

bool oxdmTableColumnQueryColumn::RefersTo(const oxdmColumnDef* def) const {
    if (column_ != nullptr) return column_ == def;
    return columnID_.CompareNoCase(def->Name()) == 0;
}

oxEditFormatter* oxdmTableColumnQueryColumn::BuildFormatter() const {
    xio_fld_def def = Column()->FldDef();
    const bool monthDay = (Style() & StyleMonthDay) != 0 || (DefaultWidth() == 5 && def.month_year == 0);
    if (def.type == XIO_DATE && monthDay) def.default_width = 5;
    return AllocateFormatter(def);
}

short oxdmTableColumnQueryColumn::Type() const { return Column()->Type(); }
bool oxdmTableColumnQueryColumn::RightJustify() const { return Column()->RightJustify(); }
CString oxdmTableColumnQueryColumn::Name() const { return Column()->Name(); }
CString oxdmTableColumnQueryColumn::Desc() const { return Column()->Desc(true); }
unsigned short oxdmTableColumnQueryColumn::DefaultWidth() const { return Column()->DefaultWidth(); }
bool oxdmTableColumnQueryColumn::Key() const { return Column()->Key(); }
bool oxdmTableColumnQueryColumn::Stamp() const {
    return Column()->FldDef().first_stamp != 0 || Column()->FldDef().second_stamp != 0;
}
bool oxdmTableColumnQueryColumn::Visible() const { return Column()->FldDef().hidden == 0; }
bool oxdmTableColumnQueryColumn::HasChoices() const { return Column()->FldDef().has_choices > 0; }
bool oxdmTableColumnQueryColumn::MultilineText() const { return Column()->FldDef().multi_line > 0; }
unsigned short oxdmTableColumnQueryColumn::MinorHelpID() const { return Column()->FldDef().help != 0 ? 509 : 0; }
unsigned short oxdmTableColumnQueryColumn::LabelBreak() const { return Column()->FldDef().label_break; }
unsigned short oxdmTableColumnQueryColumn::Length() const { return Column()->Length(); }
unsigned short oxdmTableColumnQueryColumn::MinHeadWidth() const { return Column()->MinHeadWidth(); }
short oxdmTableColumnQueryColumn::Decimal() const { return Column()->Decimal(); }
bool oxdmTableColumnQueryColumn::Capitalize() const { return Column()->Capitalize(); }
bool oxdmTableColumnQueryColumn::MonthYear() const { return Column()->FldDef().month_year != 0; }
bool oxdmTableColumnQueryColumn::UnSigned() const { return Column()->FldDef().is_signed == 0; }
bool oxdmTableColumnQueryColumn::Required() const { return Column()->FldDef().required != 0; }
bool oxdmTableColumnQueryColumn::Formatted() const { return Column()->FldDef().formatted != 0; }
short oxdmTableColumnQueryColumn::Code() const { return Column()->Code(); }
unsigned short oxdmTableColumnQueryColumn::SectionNum() const { return Column()->FldDef().section; }
bool oxdmTableColumnQueryColumn::Commas() const { return Column()->FldDef().commas != 0; }

int oxdmTableColumnQueryColumn::DefaultGridColumnWidth() const {
    if (Type() == XIO_ALPHA && Column()->FldDef().has_choices != 0) return GridWidth(true);
    return oxdmQueryColumnBase::DefaultGridColumnWidth();
}

const std::vector<CString>& oxdmTableColumnQueryColumn::Choices() const {
    if (const auto* choice = dynamic_cast<const oxdmChoiceColumnDef*>(Column())) return choice->Choices();
    return oxdmQueryColumnBase::Choices();
}

void oxdmTableColumnQueryColumn::Choices(std::vector<CString>& out) const {
    const std::vector<CString>& choices = Choices();
    out.insert(out.end(), choices.begin(), choices.end());
}

void oxdmTableColumnQueryColumn::SetChoices(const std::vector<CString>&) {
    throw oxdmException("You can't set the choices of a oxdmTableColumnQueryColumn");
}

oxData* oxdmTableColumnQueryColumn::CreateDefaultValue() const { return Column()->CreateData(); }

CString oxdmTableColumnQueryColumn::CreateLabel() const { return Column()->Desc(false); }

oxdmDSColumnBase* oxdmTableColumnQueryColumn::CreateColumn(oxdmBufferedFileDataSource& source) const {
    oxdmLiveColumnFactory& factory = oxdmLiveColumns();
    const oxioDataFile& file = factory.TableFile(source, Column()->Table());
    if (xio_num(file.FileNum(), 0, 0, Name().c_str()) < 1) {
        // The data file is older than the dictionary and lacks this custom field.
        const oxioFileInfo info(file);
        CString description = info.Description();
        if (!description.IsEmpty()) description.SetAt(0, static_cast<char>(toupper(description[0])));
        const CString fileName = info.ApplAbbr() + " " + description + " file";
        oxdmVoidColumnNotice(fileName);
        return factory.NewVoidColumn(ID(), source, &DefaultValue(), fileName);
    }
    oxdmDSColumnBase* column = factory.NewCursorColumn(Column(), ID(), source, Style(), &DefaultValue());
    if (HasPrefillValue()) factory.SetPrefillValue(*column, PrefillValue());
    return column;
}
