#include "oxdm/datasource/cell_on_focus_row.h"

#include "oxdm/datasource/data_source.h"

bool oxdmDSCellOnFocusRow::SetNewValue(const oxData* value, bool markChanged) {
    return value == nullptr && SetNewValue(CString(), markChanged);
}

bool oxdmDSCellOnFocusRow::SetFindValue(const oxData* value) {
    return value == nullptr && SetFindValue(CString());
}

void oxdmDSCellOnFocusRow::SetDefaultValue(const oxData* value) {
    if (value == nullptr) SetDefaultValue(CString());
}

CString oxdmDSCellOnFocusRow::SavedValueAsString() const { return dataSource_->SavedValueAsString(column_); }

CString oxdmDSCellOnFocusRow::OldValueAsString() const { return dataSource_->OldValueAsString(column_); }

CString oxdmDSCellOnFocusRow::NewValueAsString() const { return dataSource_->NewValueAsString(column_); }

bool oxdmDSCellOnFocusRow::SetNewValue(const CString& text, bool markChanged) {
    if (markChanged) dataSource_->ObserverSetRowChanged(0, true);
    return dataSource_->SetNewValue(column_, text);
}

CString oxdmDSCellOnFocusRow::Label() const { return dataSource_->ColLabel(column_); }

CString oxdmDSCellOnFocusRow::FieldName() const { return dataSource_->ColName(column_); }

bool oxdmDSCellOnFocusRow::IsPrefillOn() const { return dataSource_->IsPrefillOn(column_); }

void oxdmDSCellOnFocusRow::SetPrefillOn(bool on) { dataSource_->SetPrefillOn(column_, on, 0, true); }

bool oxdmDSCellOnFocusRow::IsReadOnly() const { return dataSource_->IsReadOnly(column_); }

void oxdmDSCellOnFocusRow::SetReadOnly(bool readOnly) { dataSource_->SetReadOnly(column_, readOnly, 0, true); }

void oxdmDSCellOnFocusRow::SetDefaultValue(const CString& text) { dataSource_->SetDefaultValue(column_, text); }

CString oxdmDSCellOnFocusRow::DefaultValueAsString() const { return dataSource_->DefaultValueAsString(column_); }

CString oxdmDSCellOnFocusRow::GetFindValueAsString() const { return dataSource_->GetFindValueAsString(column_); }

bool oxdmDSCellOnFocusRow::SetFindValue(const CString& text) { return dataSource_->SetFindValue(column_, text); }
