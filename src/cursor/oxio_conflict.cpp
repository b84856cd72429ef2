// The record cursor node's questions to the user when another program got
// to a row first, and the name of that program's operator.

#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/xval.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/record/table_def.h"

namespace {

constexpr unsigned kOverwriteQuestionStyle = 20;     // yes and no, stop sign
constexpr unsigned kNotSavedStyle = 16400;           // OK and Help, stop sign
constexpr unsigned kNotSavedHelp = 0x23880000;
constexpr unsigned kDeletedStyle = 0x30;             // OK, exclamation
constexpr unsigned kDeletedReinsertStyle = 0x31;     // OK and Cancel, exclamation

const char kOverwriteQuestion[] =
    "Data Conflict Error\r\rWhile you were entering data, the same data was being modified by another program. "
    "Only one instance of the data can be saved. Do you want to save the other program's changes?\r\r"
    "Recommended: click [Yes], and then reenter your changes.\r\r"
    "Click [No] to save your changes but permanently lose the changes made by the other program.";
const char kNotSaved[] =
    "Error. Data Conflict!\rAnother process has updated this data and your changes were not saved. You will need "
    "to reenter your changes. Click [Help] for more information about why this occurred. Click [OK] to continue.";
const char kDeleted[] = "This data has been deleted by someone else.\r";
const char kLoseChanges[] = "Press OK to lose your changes.";
const char kReinsert[] =
    "Press OK to attempt to insert it again. Otherwise,\r"
    "press Cancel to lose your changes.";

// A box of the application (titled with its name) on behalf of `task`.
int ApplicationBox(const oxTask* task, const CString& text, unsigned style, unsigned help) {
    TaskWindowLookup::PreModalDialogCall(task, GetTopmostAppWindow());
    oxdmMessageBox box(text, style, help);
    TaskWindowLookup::PostModalDialogCall();
    return box.value();
}

int TitledBox(const oxTask* task, const CString& text, const CString& title, unsigned style) {
    TaskWindowLookup::PreModalDialogCall(task, GetTopmostAppWindow());
    oxdmMessageBox box(text, title, style);
    TaskWindowLookup::PostModalDialogCall();
    return box.value();
}

}  // namespace

bool oxdmOXIOCursorNode::_TryAgain() {
    if (!allowOverwrite_) {
        ApplicationBox(task_, kNotSaved, kNotSavedStyle, kNotSavedHelp);
        return false;
    }
    // Yes keeps the other program's data; No writes the user's over it.
    return ApplicationBox(task_, kOverwriteQuestion, kOverwriteQuestionStyle, 0) == oxdmBox::IdNo;
}

bool oxdmOXIOCursorNode::_AskReinsert() {
    if (!allowOverwrite_) {
        TitledBox(task_, CString(kDeleted) + kLoseChanges, "Data Conflict!", kDeletedStyle);
        return false;
    }
    return TitledBox(task_, CString(kDeleted) + kReinsert, "Data Conflict!", kDeletedReinsertStyle) == oxdmBox::IdOK;
}

CString oxdmOXIOCursorNode::_GetOperatorID() {
    const xio_rec_def& rec = Table()->RecDef();
    const short file = FileNum();
    for (short field = static_cast<short>(rec.first_field + rec.field_count - 1); field >= rec.first_field; --field) {
        xio_fld_def def{};
        if (xio_get_fld_def(file, field, &def, 0, true) != 0 || def.operator_stamp == 0) continue;
        if (xio_rd_record(file, Table()->Num(), Index(), 1) != 0) break;
        x_value_def value;
        x_value_init(&value);
        CString id;
        if (xio_get_field(file, Table()->Num(), field, &value) == 0) id = value.text;
        x_value_free(&value);
        if (!id.Trim().IsEmpty()) return id;
        break;
    }
    return "someone else";
}
