// The print hub: a print job run on the operator's behalf, confirmed
// through the presenter and ended by messages.

#include <climits>
#include <cstring>

#include "job_table.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"

namespace {

std::string Bounded(const char* text, std::size_t size) { return std::string(text, strnlen(text, size)); }

// Asks the operator to confirm the job named name, printing to output.
bool Confirmed(const std::string& name, const std::string& output) {
    CString text;
    text.Format("Print %s?\nThe report goes to %s.pdf and %s.txt.", name.c_str(), output.c_str(), output.c_str());
    TaskWindowLookup::PreModalDialogCall(nullptr, GetTopmostAppWindow());
    oxdmMessageBox box(text, CString(name), oxdmBox::OKCancel | oxdmBox::IconQuestion);
    TaskWindowLookup::PostModalDialogCall();
    return box.isOk();
}

}  // namespace

short xh_process_id() {
    static short last = 0;
    last = last == SHRT_MAX ? 1 : static_cast<short>(last + 1);
    return last;
}

short xh_process_hub(xh_process_def* def) {
    if (def == nullptr || def->process_id == 0 || def->process == nullptr || def->terminate == nullptr) return 0;
    const std::string name = Bounded(def->name, sizeof def->name);
    if (name.empty()) return 0;
    const xp_print_def report = def->report;
    const std::string output = Bounded(def->output, sizeof def->output);
    xpJobTable& jobs = xpJobTable::Instance();
    const short handle = jobs.Open(report, output.c_str(), Bounded(def->short_name, sizeof def->short_name), name, true);
    if (handle == 0) return 0;
    if (!Confirmed(name, jobs.Find(handle)->Output())) {
        jobs.Close(handle);
        def->terminate(def->user_data);
        return 0;
    }
    def->handle = handle;
    if (def->process(def) != 0) {
        jobs.Close(handle);
        return 0;
    }
    // The process may have ended the job itself.
    return jobs.Find(handle) ? handle : 0;
}

// The hub shows no window while a job runs (its one window, the
// confirmation box, is closed before the job starts): there is nothing to
// hide, for a known hub or any other number.
void xw_hide_window(short) {}

long xw_send_message(short hub, short message, short, short, long, long, long) {
    xpJobTable& jobs = xpJobTable::Instance();
    xpPrintJob* job = jobs.Find(hub);
    if (job == nullptr || !job->FromHub()) return XP_BAD_HANDLE;
    switch (message) {
        case XH_MSG_END_REPORT: return job->Write();
        case XH_MSG_CLOSE: {
            const short result = job->Finish();
            jobs.Close(hub);
            return result;
        }
        default: return XP_BAD_ARGUMENT;
    }
}
