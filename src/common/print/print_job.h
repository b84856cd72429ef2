#pragma once
// xpPrintJob: one open print job: its pages, where they go, and whether the
// hub runs it.

#include <string>

#include "page_model.h"

class xpPrintJob {
public:
    // REQUIRES: def was normalized (xpNormalizeDefinition); output, the path without extension, is not empty.
    xpPrintJob(const xp_print_def& def, std::string output, std::string name, bool fromHub);

    xpPageModel& Model() { return model_; }
    const std::string& Output() const { return output_; }
    bool FromHub() const { return fromHub_; }

    // Writes <output>.txt and <output>.pdf; each failure is shown to the
    // operator with the path and the reason. XP_OK or XP_WRITE_FAILED.
    short Write();
    // Write, unless the job was written already (then XP_OK).
    short Finish() { return written_ ? XP_OK : Write(); }

private:
    // model_ holds every line written so far; output_ and name_ (the title of
    // failure boxes) are fixed; written_ turns true on the first Write.
    xpPageModel model_;
    std::string output_;
    std::string name_;
    bool fromHub_;
    bool written_ = false;
};
