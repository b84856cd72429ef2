#pragma once
// PoCreateInstance: objects made by class identifier, the library's stand-in
// for the system's class factory. The pair, the pair collection and the
// string collection are registered from the start; an application or a test
// may register other classes, or replace or remove these.

#include "oxdm/cursor/objects/com.h"

inline constexpr CLSID CLSID_POPairCollection = {
    0x53D8BFF1, 0x963B, 0x4421, {0xB9, 0x90, 0x31, 0x99, 0x8B, 0x98, 0x18, 0xB5}};
inline constexpr CLSID CLSID_POPair = {0xF6212DA8, 0xB858, 0x4261, {0xAB, 0x29, 0xD3, 0x6C, 0x98, 0x92, 0xB0, 0x2E}};
inline constexpr CLSID CLSID_POStringCollection = {
    0x0A7D0101, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x01, 0x01}};

// Makes a new object (count 0), or answers null when it can't.
using PoClassCreator = IUnknown* (*)();

// Registers `creator` for `clsid` and answers the one it replaces; a null
// creator removes the class.
PoClassCreator PoRegisterClass(const CLSID& clsid, PoClassCreator creator);

// A new object of class `clsid`, asked for its face `iid` into *out.
// REGDB_E_CLASSNOTREG for an unknown class, E_FAIL when the creator
// answers null, E_NOINTERFACE when the object lacks the face.
HRESULT PoCreateInstance(const CLSID& clsid, const IID& iid, void** out);
