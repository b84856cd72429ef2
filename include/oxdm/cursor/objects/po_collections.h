#pragma once
// The small collections of the object model: a string collection, the pair
// of a find parameter and the pair collection. PoCreateInstance makes them
// by their class identifiers; a store may also make them with new.

#include <vector>

#include "oxdm/cursor/objects/com_object.h"

class oxPOStringCollection : public PoComObject<IStringCollection> {
public:
    oxPOStringCollection() = default;
    explicit oxPOStringCollection(const std::vector<CString>& values) : values_(values) {}

    HRESULT Item(long index, CString* text) override;
    HRESULT get_Count(long* count) override;
    HRESULT Add(const CString& text) override;

    const std::vector<CString>& Values() const { return values_; }

private:
    std::vector<CString> values_;
};

class oxPOPair : public PoComObject<IPOPair> {
public:
    HRESULT put_Name(const CString& name) override;
    HRESULT get_Name(CString* name) override;
    HRESULT put_Value(const ATL::CComVariant& value) override;
    HRESULT get_Value(ATL::CComVariant* value) override;

private:
    CString name_;
    ATL::CComVariant value_;
};

// Holds a counted reference on each pair added.
class oxPOPairCollection : public PoComObject<IPOPairCollection> {
public:
    HRESULT Count(long* count) override;
    HRESULT Item(long index, IPOPair** pair) override;
    HRESULT Clear() override;
    HRESULT Add(IPOPair* pair, long* index) override;

private:
    std::vector<ATL::CComPtr<IPOPair>> pairs_;
};

// Reads a whole string collection into `out` (appending); false when the
// collection is null or one of its calls fails.
bool PoReadStrings(IStringCollection* collection, std::vector<CString>& out);
