#pragma once
// The interfaces of an object store: a container of business objects (the
// set), iterators over it, the objects with their named properties, type
// information of the properties, find parameters (pairs of a name and a
// value) and the events a set and an object raise.
//
// Operations stand in the order the bridge relies on. Indexes are 0-based.
// Flags read through `short*` are VARIANT_TRUE or VARIANT_FALSE. Out
// parameters of interface pointers carry one reference for the caller.
//
// Faces without an identifier of the published list (the property type
// information, string collections, the object's own face, validation
// errors) carry identifiers of this library, in the block 0A7D00xx.

#include "oxdm/base/cstring.h"
#include "oxdm/cursor/objects/com.h"
#include "oxdm/cursor/objects/com_variant.h"

class IPersistentObject;
class IPOPair;
class IPropertyTypeInfo;

class IStringCollection : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0001, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x01}};
    virtual HRESULT Item(long index, CString* text) = 0;
    virtual HRESULT get_Count(long* count) = 0;
    virtual HRESULT Add(const CString& text) = 0;
};

// One term of a find parameter: a property's name and the value sought.
class IPOPair : public IDispatch {
public:
    static constexpr IID kIID = {0x6AAF7D15, 0x56CB, 0x4ABC, {0xB3, 0x64, 0x7F, 0xA6, 0xED, 0x8C, 0x59, 0x62}};
    virtual HRESULT put_Name(const CString& name) = 0;
    virtual HRESULT get_Name(CString* name) = 0;
    virtual HRESULT put_Value(const ATL::CComVariant& value) = 0;
    virtual HRESULT get_Value(ATL::CComVariant* value) = 0;
};

class IPOPairCollection : public IDispatch {
public:
    static constexpr IID kIID = {0x6E2319B8, 0x71B4, 0x4987, {0xAC, 0x24, 0x57, 0x21, 0x60, 0x22, 0xB9, 0x23}};
    virtual HRESULT Count(long* count) = 0;
    virtual HRESULT Item(long index, IPOPair** pair) = 0;
    virtual HRESULT Clear() = 0;
    virtual HRESULT Add(IPOPair* pair, long* index) = 0;
};

// The container.
class IPersistentObjectSet : public IDispatch {
public:
    static constexpr IID kIID = {0xFE383760, 0x0544, 0x4A05, {0xA0, 0xAC, 0xD3, 0x97, 0x9C, 0x11, 0x7C, 0xFD}};
    // The object whose sort properties equal the parameter's values.
    virtual HRESULT Find(IPOPairCollection* params, IPersistentObject** iterator, short* found) = 0;
    virtual HRESULT Count(long* count) = 0;
    virtual HRESULT IsEmpty(short* empty) = 0;
    // An iterator on the first object (on nothing when the set is empty).
    virtual HRESULT Begin(IPersistentObject** iterator) = 0;
    // An iterator on the last object (on nothing when the set is empty).
    virtual HRESULT End(IPersistentObject** iterator) = 0;
};

class IRelativeIteratorFind : public IDispatch {
public:
    static constexpr IID kIID = {0x24F655F0, 0x3AF2, 0x48BB, {0x9C, 0xBC, 0x05, 0xFE, 0x1B, 0x20, 0xDE, 0x17}};
    // The first object at or after (FindGE), or after (FindGT), the values.
    virtual HRESULT FindGE(IPOPairCollection* params, IPersistentObject** iterator, short* found) = 0;
    virtual HRESULT FindGT(IPOPairCollection* params, IPersistentObject** iterator, short* found) = 0;
};

// Percent positions (0 the first object, 100 the last).
class IRelativeIteratorPosition : public IDispatch {
public:
    static constexpr IID kIID = {0xAEA71C84, 0xA523, 0x4AAB, {0xAA, 0x0F, 0x35, 0xC3, 0x32, 0x41, 0x3A, 0xE4}};
    virtual HRESULT GetRelativePosition(IPersistentObject* iterator, double* percent) = 0;
    virtual HRESULT SetRelativePosition(double percent, IPersistentObject** iterator) = 0;
};

// The iterator face: a position in the set's order, which can be cloned.
class IPersistentObject : public IDispatch {
public:
    static constexpr IID kIID = {0x36DE8CDE, 0xB93B, 0x4AB9, {0xAD, 0xEA, 0xA9, 0x6A, 0x6D, 0xFA, 0x0F, 0xD4}};
    virtual HRESULT Prev(short* moved) = 0;
    virtual HRESULT Next(short* moved) = 0;
    // The object under the iterator; S_FALSE and null when it stands on none.
    virtual HRESULT Current(IUnknown** object) = 0;
    virtual HRESULT IsEqual(IPersistentObject* other, short* equal) = 0;
    virtual HRESULT IsLess(IPersistentObject* other, short* less) = 0;
    virtual HRESULT Clone(IPersistentObject** iterator) = 0;
};

// The object's own face.
class IPOObject : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0002, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x02}};
    // A stored object takes the stored values again (its edits are lost); a
    // new object takes the defaults.
    virtual HRESULT Reset() = 0;
    virtual HRESULT IsNew(short* isNew) = 0;
    // Writes the object; PO_E_CONFLICT or PO_E_GONE, or E_FAIL with the
    // reason in ErrorText.
    virtual HRESULT Save() = 0;
    virtual HRESULT Delete() = 0;
    // The object as a whole; *errors (an IPOValidationErrors) when not ok.
    virtual HRESULT Validate(IUnknown** errors, short* ok) = 0;
    // The reason of the last failure of this object.
    virtual HRESULT ErrorText(CString* text) = 0;
    virtual HRESULT IsDirty(short* dirty) = 0;
};

// What validation found: the properties in error and their reasons.
class IPOValidationErrors : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0003, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x03}};
    virtual HRESULT Count(long* count) = 0;
    virtual HRESULT Property(long index, CString* name) = 0;
    virtual HRESULT Message(long index, CString* text) = 0;
};

class IPOProperties : public IDispatch {
public:
    static constexpr IID kIID = {0x39208379, 0xC581, 0x4D33, {0x87, 0x7E, 0xE4, 0x97, 0xA5, 0x31, 0xA3, 0xDC}};
    virtual HRESULT GetProperty(const CString& name, short* readOnly, ATL::CComVariant* value) = 0;
    virtual HRESULT SetProperty(const CString& name, const ATL::CComVariant& value) = 0;
    // *errors (an IPOValidationErrors) when not ok.
    virtual HRESULT IsValidValueForProperty(const CString& name, const ATL::CComVariant& value, IUnknown** errors,
                                            short* ok) = 0;
    // `sink` answers INamedPropertyEvents (and INamedPropertyEvents2 for the
    // changing event).
    virtual HRESULT Advise(IUnknown* sink, unsigned long* cookie) = 0;
    virtual HRESULT Unadvise(unsigned long cookie) = 0;
};

class IPOCloneable : public IDispatch {
public:
    static constexpr IID kIID = {0x54AB6586, 0x0526, 0x4C68, {0xB2, 0xF9, 0x8B, 0x3C, 0x0B, 0xA2, 0xD4, 0x85}};
    // A copy of the object: same identity, same values, same read state.
    virtual HRESULT Clone(IUnknown** object) = 0;
};

class IPOSetEdit : public IDispatch {
public:
    static constexpr IID kIID = {0x5E03E823, 0x03ED, 0x41C8, {0x89, 0x56, 0x22, 0xD2, 0x37, 0xDB, 0x5E, 0x2F}};
    // A new object is stored and joins the set; an object of the set's
    // identity takes the place of the one the set holds.
    virtual HRESULT Add(IUnknown* object, long* index) = 0;
    virtual HRESULT Remove(IUnknown* object) = 0;
};

class IPOSetRestore : public IDispatch {
public:
    static constexpr IID kIID = {0x7EB3379E, 0x27D7, 0x4AEA, {0xA8, 0x2B, 0xD6, 0x22, 0xAE, 0x22, 0x58, 0x35}};
    // An object of the set that stands for `backup` from now on.
    virtual HRESULT Restore(IUnknown* backup, IUnknown** object) = 0;
};

class IPOWriteControl : public IDispatch {
public:
    static constexpr IID kIID = {0x93EEC4CC, 0x9292, 0x46C0, {0xA9, 0x54, 0x8F, 0xA7, 0x19, 0x3D, 0x33, 0xA6}};
    // Whether Save checks for the writes of others (on by default).
    virtual HRESULT SetCheck(bool check) = 0;
    virtual HRESULT GetCheck(short* check) = 0;
    // The next Save stores the object afresh.
    virtual HRESULT MarkNew() = 0;
    // Takes the stored state as read, keeping the properties this object
    // changed.
    virtual HRESULT Reread() = 0;
};

class IPOFactory : public IDispatch {
public:
    static constexpr IID kIID = {0xDDD1385C, 0x3EA3, 0x40A4, {0x8A, 0xB7, 0x0B, 0xEA, 0xB4, 0x0F, 0xB2, 0x9F}};
    virtual HRESULT CreateObject(IUnknown** object) = 0;
};

class IPOSetFactory : public IDispatch {
public:
    static constexpr IID kIID = {0x677C1D01, 0xF647, 0x49FC, {0x9A, 0xC9, 0x1D, 0x3C, 0x2A, 0x99, 0x4B, 0x28}};
    virtual HRESULT Create(IUnknown** object) = 0;
};

class ISupportSorting : public IDispatch {
public:
    static constexpr IID kIID = {0xD5257069, 0xBE5D, 0x4046, {0x8E, 0x0C, 0x5F, 0xC2, 0x77, 0x57, 0xBB, 0x1F}};
    // The names of the properties the set is sorted by, in their order.
    virtual HRESULT GetSort(IStringCollection** properties) = 0;
    virtual HRESULT SetSort(IStringCollection* properties) = 0;
    // `sink` answers ISortingEvents.
    virtual HRESULT Advise(IUnknown* sink, unsigned long* cookie) = 0;
    virtual HRESULT Unadvise(unsigned long cookie) = 0;
};

class ISupportFiltering : public IDispatch {
public:
    static constexpr IID kIID = {0x93643243, 0xA5CB, 0x4D42, {0x95, 0x16, 0xFA, 0x09, 0x8C, 0xF0, 0x60, 0xFA}};
    virtual HRESULT IsFiltered(short* filtered) = 0;
    virtual HRESULT ClearFilter() = 0;
    // `sink` answers IFilteringEvents.
    virtual HRESULT Advise(IUnknown* sink, unsigned long* cookie) = 0;
    virtual HRESULT Unadvise(unsigned long cookie) = 0;
};

class IPropertyTypeInfoCollection : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0004, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x04}};
    virtual HRESULT Count(long* count) = 0;
    virtual HRESULT NewEnum(IUnknown** enumerator) = 0;
    virtual HRESULT Item(long index, IPropertyTypeInfo** info) = 0;
};

class ISupportPropertyTypeInfo : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0005, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x05}};
    // The information of each named property the set knows, in the order
    // asked; an unknown name is left out.
    virtual HRESULT GetPropertyTypeInfoCollection(IStringCollection* properties,
                                                  IPropertyTypeInfoCollection** collection) = 0;
};

// What a property is, in the terms of a field of the dictionary.
class IPropertyTypeInfo : public IDispatch {
public:
    static constexpr IID kIID = {0x0A7D0006, 0x5EED, 0x4F00, {0x8A, 0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x06}};
    // The store's type number (oxPOTypeConverters maps it).
    virtual HRESULT get_Type(int* type) = 0;
    virtual HRESULT get_Length(short* value) = 0;
    virtual HRESULT get_Key(short* value) = 0;
    virtual HRESULT get_Code(short* value) = 0;
    virtual HRESULT get_Formatted(short* value) = 0;
    virtual HRESULT get_SectionNumber(short* value) = 0;
    virtual HRESULT get_DescriptionBreak(short* value) = 0;
    virtual HRESULT get_DefaultWidth(short* value) = 0;
    virtual HRESULT get_MinimumHeadWidth(short* value) = 0;
    virtual HRESULT get_AuditRequired(short* value) = 0;
    virtual HRESULT get_Text(short* value) = 0;
    virtual HRESULT get_RightJustify(short* value) = 0;
    virtual HRESULT get_Capitals(short* value) = 0;
    virtual HRESULT get_Choice(short* value) = 0;
    virtual HRESULT get_Choices(IStringCollection** choices) = 0;
    virtual HRESULT get_Decimal(short* value) = 0;
    virtual HRESULT get_Signed(short* value) = 0;
    virtual HRESULT get_Commas(short* value) = 0;
    virtual HRESULT get_PrintZero(short* value) = 0;
    virtual HRESULT get_MonthYear(short* value) = 0;
    virtual HRESULT get_ElapsedTime(short* value) = 0;
    virtual HRESULT get_Name(CString* name) = 0;
};

class INamedPropertyEvents : public IDispatch {
public:
    static constexpr IID kIID = {0xA53422B4, 0xE16D, 0x4FB7, {0xBA, 0x78, 0x00, 0x1F, 0x19, 0x23, 0xAC, 0xC2}};
    virtual HRESULT OnPropertyChanged(const CString& name, const ATL::CComVariant& value) = 0;
};

class INamedPropertyEvents2 : public INamedPropertyEvents {
public:
    static constexpr IID kIID = {0x8C062122, 0x22E8, 0x41D4, {0x8E, 0xB2, 0x36, 0xA8, 0xD3, 0xE1, 0x1E, 0x5C}};
    // Before a property of the object is written.
    virtual HRESULT OnPropertyChanging() = 0;
};

class ISortingEvents : public IDispatch {
public:
    static constexpr IID kIID = {0x1863B1AB, 0xBF91, 0x4B31, {0x9F, 0xC5, 0xDC, 0x35, 0x3C, 0x89, 0xDD, 0x83}};
    virtual HRESULT OnSortChanged(IStringCollection* properties) = 0;
};

class IFilteringEvents : public IDispatch {
public:
    static constexpr IID kIID = {0x79E29F89, 0xE458, 0x4E24, {0xBE, 0x46, 0xED, 0xAE, 0x0A, 0xE4, 0x83, 0x37}};
    virtual HRESULT OnFilterChanged() = 0;
};
