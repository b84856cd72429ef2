#pragma once
// oxDictionaryLoader: finds a dictionary's source on the search path and
// compiles it. The search path is the environment variable OXDM_DICT_PATH, a
// colon-separated list of directories (empty entries mean the current
// directory), or the current directory alone when it is unset or empty. The
// source of dictionary `ord` is the first `ord.toml` found along it. A name
// that holds a '/' or ends in ".toml" is taken as a path and not searched.
//
// A successful Load makes the dictionary's field codes known to the xk_*
// functions (field_codes.h). Each Load compiles the source again, so that a dictionary edited while the
// process runs (custom fields added) is seen by the next open.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/dictionary.h"

class oxDictionaryLoader {
public:
    // The directories searched, in order.
    static std::vector<CString> SearchPath();

    // The path of the source of `nameOrPath`; empty when there is none.
    static CString FindSource(const CString& nameOrPath);

    // Loads a dictionary. Returns a raw status (raw_status.h): IO_VALID with
    // `out` set; FILE_NOT_FOUND when no source exists; IO_ERROR when it cannot
    // be read; CORRUPT_DATA when it does not compile. On failure `error` holds
    // the whole message (for a compile failure every "file:line: fault") and
    // LastError() keeps it until the next failed Load.
    static short Load(const CString& nameOrPath, std::shared_ptr<const oxDictionary>& out,
                      CString& error);

    // The message of the most recent failed Load in this process; empty when
    // none has failed.
    static const CString& LastError();
};
