// The print service: the flat calls on a print job's current line and pages.

#include <cstring>

#include "field_text.h"
#include "job_table.h"

namespace {

xpPageModel* ModelOf(short handle) {
    xpPrintJob* job = xpJobTable::Instance().Find(handle);
    return job ? &job->Model() : nullptr;
}

}  // namespace

short xp_open(const xp_print_def* def, const char* output) {
    if (def == nullptr) return 0;
    const std::string title(def->title2, strnlen(def->title2, sizeof def->title2));
    return xpJobTable::Instance().Open(*def, output, title, title, false);
}

short xp_close(short handle) {
    xpPrintJob* job = xpJobTable::Instance().Find(handle);
    if (job == nullptr) return XP_BAD_HANDLE;
    const short result = job->Finish();
    xpJobTable::Instance().Close(handle);
    return result;
}

short xp_put_field(short handle, xp_field_def* field, x_value_def* value) {
    xpPageModel* model = ModelOf(handle);
    if (model == nullptr) return XP_BAD_HANDLE;
    if (field == nullptr || value == nullptr) return XP_BAD_ARGUMENT;
    return model->PutField(*field, xpFieldText(*field, *value));
}

short xp_set_line(short handle, short kind, short line) {
    xpPageModel* model = ModelOf(handle);
    return model ? model->SetLine(kind, line) : XP_BAD_HANDLE;
}

short xp_wr_line(short handle, short count, short skip, short new_page) {
    xpPageModel* model = ModelOf(handle);
    return model ? model->WriteLine(count, skip, new_page != 0) : XP_BAD_HANDLE;
}

short xp_get_def(short handle, xp_print_def* def) {
    xpPageModel* model = ModelOf(handle);
    if (model == nullptr) return XP_BAD_HANDLE;
    if (def == nullptr) return XP_BAD_ARGUMENT;
    *def = model->Definition();
    return XP_OK;
}

short xp_lines_left(short handle) {
    xpPageModel* model = ModelOf(handle);
    return model ? model->LinesLeft() : XP_BAD_HANDLE;
}
