#pragma once
// Reading a dictionary source file, and the dictionary name a path gives.

#include "oxdm/base/cstring.h"

// Reads the whole file; false when it cannot be opened or read.
bool oxReadSourceFile(const CString& path, CString& text);

// The dictionary's name from its source path: the file's name without its
// directory and its ".toml" extension.
CString oxDictionaryNameOf(const CString& path);
