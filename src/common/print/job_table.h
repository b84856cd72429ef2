#pragma once
// The open print jobs of the process, by handle.

#include <map>
#include <memory>
#include <string>

#include "print_job.h"

class xpJobTable {
public:
    static xpJobTable& Instance();

    // Opens a job printing with def (its defaults filled in); output (the path without extension)
    // when given and not empty, else the default path named after
    // defaultName. title names the job in boxes. Answers the handle, or 0
    // when every handle is in use.
    short Open(const xp_print_def& def, const char* output, const std::string& defaultName,
               const std::string& title, bool fromHub);
    // The open job of handle; null for any other number.
    xpPrintJob* Find(short handle) const;
    // Forgets the job of handle (its pages with it); nothing for an unknown one.
    void Close(short handle);

private:
    // The default output path: $OXDM_PRINT_DIR (the current directory when
    // unset or empty), then name with blanks and slashes as '-', then
    // -yyyymmdd-hhmmss, and -2, -3, ... when files of that name exist or an
    // open job will write them.
    std::string DefaultOutput(const std::string& name) const;
    bool OutputTaken(const std::string& path) const;

    // Every job here is open; handles are 1..32767, handed out in turn
    // (after 32767 again from 1, skipping those in use) so that a closed
    // job's handle is not soon reused.
    std::map<short, std::unique_ptr<xpPrintJob>> jobs_;
    short next_ = 1;
};
