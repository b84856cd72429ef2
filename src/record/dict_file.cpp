#include "dict_file.h"

#include <cassert>
#include <cstring>

#include "oxdm/common/dictionary/flat_definitions.h"

short oxdmOpenDictFile(const CString& dict, short* file) {
    assert(file != nullptr);
    xio_open_dict_def def;
    std::memset(&def, 0, sizeof def);
    std::strncpy(def.name, dict.c_str(), sizeof def.name - 1);
    def.mode = 1;
    const short status = xio_open_dictionary(&def);
    if (status == 0) *file = def.file;
    return status;
}

oxdmDictFileCloser::~oxdmDictFileCloser() { xio_cls_file(file_); }
