#include "oxdm/datasource/buffered/ds_column_in_cursor.h"

#include <cassert>

#include "oxdm/base/exception.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/record/column_def.h"
#include "oxdm/record/table_def.h"

namespace {

const oxdmChoiceColumnDef* ChoiceDef(const oxdmColumnDef* def) { return dynamic_cast<const oxdmChoiceColumnDef*>(def); }

}  // namespace

oxdmDSColumnInCursor::oxdmDSColumnInCursor(const oxdmColumnDef* def, const CString& id,
                                           oxdmBufferedFileDataSource& source, int style, const oxData* defaultValue)
    : oxdmDSColumnBase(id, source, style, defaultValue) {
    assert(def != nullptr);
    columnNode_ = source.Cursor()->Node(def->Table());
    if (columnNode_ == nullptr) {
        throw oxdmException("The cursor tree of " + source.NodeLabel() + " holds no table of column " + id + ".");
    }
    columnNode_->AddColumn(def);
    SetColDef(def);
}

oxdmDSColumnInCursor::~oxdmDSColumnInCursor() = default;

oxData* oxdmDSColumnInCursor::CurrentVal() const {
    oxData* value = Val();
    columnNode_->ValueForColumn(OXColumn(), value);
    // A choice is never seen at index 0: it reads as the field's default.
    if (auto* choice = dynamic_cast<oxChoice*>(value); choice && choice->GetVal() == 0) {
        const short fieldDefault = OXColumn()->FldDef().default_value;
        choice->SetVal(static_cast<unsigned short>(fieldDefault != 0 ? fieldDefault : 1));
    }
    return value;
}

bool oxdmDSColumnInCursor::WriteThrough() { return columnNode_->SetValueForColumn(OXColumn(), Val()); }

bool oxdmDSColumnInCursor::SetValue(const oxdmDSColumnBase& from) {
    return oxdmDSColumnBase::SetValue(from) && WriteThrough();
}

bool oxdmDSColumnInCursor::SetValue(const oxData& value) { return oxdmDSColumnBase::SetValue(value) && WriteThrough(); }

bool oxdmDSColumnInCursor::SetValue(const CString& text) {
    if (const oxdmChoiceColumnDef* choices = ChoiceDef(OXColumn())) {
        return SetValue(oxChoice(static_cast<unsigned short>(choices->IndexForChoice(text))));
    }
    return oxdmDSColumnBase::SetValue(text) && WriteThrough();
}

bool oxdmDSColumnInCursor::CopyValue(const oxData& from, oxData& to) const {
    return oxdmDSColumnBase::CopyValue(from, to);
}

bool oxdmDSColumnInCursor::CopyValue(const oxdmDSColumnBase& from, oxData& to) const {
    return oxdmDSColumnBase::CopyValue(from, to);
}

bool oxdmDSColumnInCursor::CopyValue(const CString& from, oxData& to) const {
    const oxdmChoiceColumnDef* choices = ChoiceDef(OXColumn());
    if (choices && dynamic_cast<oxChoice*>(&to) != nullptr) {
        return CopyValue(oxChoice(static_cast<unsigned short>(choices->IndexForChoice(from))), to);
    }
    return oxdmDSColumnBase::CopyValue(from, to);
}

CString oxdmDSColumnInCursor::ValueAsString(const oxData& value) const {
    const xio_fld_def& fld = OXColumn()->FldDef();
    if (const oxdmChoiceColumnDef* choices = ChoiceDef(OXColumn())) {
        if (const auto* choice = dynamic_cast<const oxChoice*>(&value)) {
            return choices->ChoiceForIndex(static_cast<short>(choice->GetVal()));
        }
    }
    if (fld.type == XIO_NUMERIC && (Style() & StyleShowZero) == 0 && value.IsNull() && fld.zero_shown == 0) {
        return CString();
    }
    if (fld.type == XIO_SSNUM && value.IsNull()) return CString();
    return oxdmDSColumnBase::ValueAsString(value);
}

CString oxdmDSColumnInCursor::ValueAsString() const { return ValueAsString(Value(false)); }

void oxdmDSColumnInCursor::Choices(std::vector<CString>& out) const {
    if (const oxdmChoiceColumnDef* choices = ChoiceDef(OXColumn())) {
        const size_t before = out.size();
        choices->Choices(out);
        if (out.size() == before) out.push_back(ValueAsString());
        return;
    }
    oxdmDSColumnBase::Choices(out);
}

const oxData* oxdmDSColumnInCursor::SourceValue() const {
    oxdmCursorNode* parent = columnNode_->Parent();
    if (parent == nullptr) return nullptr;
    const oxdmColumnDef* sourceDef = columnNode_->FindSourceColumn(OXColumn());
    if (sourceDef == nullptr) return nullptr;
    if (!sourceValue_) sourceValue_.reset(sourceDef->CreateData());
    parent->ValueForColumn(sourceDef, sourceValue_.get());
    return sourceValue_.get();
}

const oxData& oxdmDSColumnInCursor::DefaultValue(bool useSource) const {
    if (useSource) {
        if (const oxData* inherited = SourceValue()) return *inherited;
    }
    return oxdmDSColumnBase::DefaultValue(useSource);
}

const oxData& oxdmDSColumnInCursor::PrefillValue() const {
    if (const oxData* inherited = SourceValue()) return *inherited;
    return PrefillOn() ? oxdmDSColumnBase::PrefillValue() : DefaultValue(false);
}

bool oxdmDSColumnInCursor::Required() const {
    const xio_fld_def& fld = OXColumn()->FldDef();
    if (fld.hidden != 0 && fld.help != 0) return false;
    return (Style() & StyleRequired) != 0 || fld.required != 0;
}

bool oxdmDSColumnInCursor::IsReadOnly() const {
    if (oxdmDSColumnBase::IsReadOnly()) return true;
    if (OXColumn()->FldDef().protect == 0) return false;
    // While auditing is on, every change is recorded, so a protected field
    // may be edited.
    if (oxdmGlobalData::Instance()->Auditing()) return false;
    if (!DataSource().IsNewRow()) return true;
    return (Style() & StyleNewRowWritable) == 0;
}

short oxdmDSColumnInCursor::Type() const { return OXColumn()->Type(); }

oxData* oxdmDSColumnInCursor::CreateDefaultValue() const { return OXColumn()->CreateData(); }

CString oxdmDSColumnInCursor::CreateLabel() { return OXColumn()->Desc(true); }
