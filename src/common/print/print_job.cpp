// Writing a print job's files.

#include "print_job.h"

#include <cassert>
#include <utility>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"
#include "report_files.h"

namespace {

// Shows why path could not be written; answers whether it was.
bool Reported(const std::string& path, const std::string& reason, const std::string& title) {
    if (reason.empty()) return true;
    CString text;
    text.Format("The report could not be written to '%s': %s.", path.c_str(), reason.c_str());
    TaskWindowLookup::PreModalDialogCall(nullptr, GetTopmostAppWindow());
    oxdmMessageBox box(text, CString(title), oxdmBox::OK | oxdmBox::IconExclamation);
    TaskWindowLookup::PostModalDialogCall();
    return false;
}

}  // namespace

xpPrintJob::xpPrintJob(const xp_print_def& def, std::string output, std::string name, bool fromHub)
    : model_(def), output_(std::move(output)), name_(std::move(name)), fromHub_(fromHub) {
    assert(!output_.empty());
}

short xpPrintJob::Write() {
    written_ = true;
    const std::vector<xpPage> pages = model_.Pages();
    const std::string text = output_ + ".txt";
    const std::string pdf = output_ + ".pdf";
    const bool textOk = Reported(text, xpWriteText(text, pages), name_);
    const bool pdfOk = Reported(pdf, xpWritePdf(pdf, model_.Definition(), pages), name_);
    return textOk && pdfOk ? XP_OK : XP_WRITE_FAILED;
}
