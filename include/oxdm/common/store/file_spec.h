#pragma once
// oxioFileSpec: the identity of a record file, by path.
//
// A record file is named by its path; its extension is the name of the
// dictionary that describes it ("sales.ord" is described by "ord"). A path
// without an extension names the dictionary itself and the record file
// "<name>.<name>" ("ord" is "ord.ord"). Two specs are equal when their paths,
// file codes, groups and policies are; a spec matches an open file when
// their paths name the same file.

#include "oxdm/base/cstring.h"

class oxioDataFile;

// The record-level security policy of an open; 0 is none, the only one kept.
using RLS_AUTH_POLICY = short;

class oxioFileSpec {
public:
    explicit oxioFileSpec(const CString& path, RLS_AUTH_POLICY policy = 0);
    // A spec that also carries a file code and a transaction group.
    oxioFileSpec(const CString& path, short fileCode, short group);

    bool operator==(const oxioFileSpec& other) const;
    bool IsMatchingFile(const oxioDataFile& file) const;

    const CString& Path() const { return path_; }
    // The record file's path with the default extension applied.
    CString FilePath() const;
    // The dictionary that describes the file: the path's extension.
    CString Dictionary() const;
    short FileCode() const { return fileCode_; }
    short Group() const { return group_; }
    RLS_AUTH_POLICY Policy() const { return policy_; }

private:
    CString path_;
    RLS_AUTH_POLICY policy_ = 0;
    short fileCode_ = 0;
    short group_ = 0;
};
