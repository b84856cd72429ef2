// check, create and upgrade: dictionaries and whole record files.
#include <filesystem>
#include <ostream>

#include "commands.h"
#include "file_upgrade.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"

namespace oxdm::admin {

int CheckCommand(const Words& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) return kExitUsage;
    CString path = oxDictionaryLoader::FindSource(CString(args[0]));
    if (path.IsEmpty()) {
        err << "oxdm-admin: no dictionary '" << args[0] << "' on the search path (OXDM_DICT_PATH).\n";
        return kExitFailure;
    }
    oxDictCompileResult result = oxDictionaryCompiler::CompileFile(path);
    if (!result.Ok()) {
        for (const oxDictError& error : result.errors) out << error.Text() << "\n";
        out << result.errors.size() << (result.errors.size() == 1 ? " error" : " errors") << " in " << path << ".\n";
        return kExitFailure;
    }
    const oxDictionary& dict = *result.dictionary;
    out << path << ": no errors (" << dict.TableCount() << " tables, " << dict.FieldCount() << " fields, "
        << dict.KeyCount() << " keys).\n";
    return kExitOk;
}

int CreateCommand(const Words& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) return kExitUsage;
    oxioFileSpec spec{CString(args[0])};
    CString filePath = spec.FilePath();
    if (std::filesystem::exists(filePath.str())) {
        err << "oxdm-admin: the record file '" << filePath << "' already exists.\n";
        return kExitFailure;
    }
    oxioStatus::Status status;
    CString error;
    if (!oxioDataFile::Open(spec, true, status, error)) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    out << "Created " << filePath << " from the dictionary " << spec.Dictionary() << ".\n";
    return kExitOk;
}

int UpgradeCommand(const Words& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 1) return kExitUsage;
    CString error;
    if (!UpgradeRecordFile(CString(args[0]), out, error)) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    return kExitOk;
}

}  // namespace oxdm::admin
