// The object bridge's start-up: the container's faces, the property names,
// their type information made into column definitions and columns, the
// first iterator and the events of the container.

#include <cstring>

#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/cursor/objects/po_bridge.h"
#include "oxdm/cursor/objects/po_collections.h"
#include "oxdm/cursor/objects/po_factory.h"
#include "oxdm/cursor/objects/po_property_column.h"
#include "oxdm/cursor/objects/type_converters.h"
#include "oxdm/record/column_def.h"

namespace {

// Throws `message` when the store's answer is a failure.
void Require(HRESULT hr, const char* message) {
    if (PoFailed(hr)) throw CString(message);
}

// One reading of the type information: the operation, its failure and
// where the answer goes in the field record (nowhere for a flag the record
// has no place for).
struct FieldReading {
    HRESULT (IPropertyTypeInfo::*get)(short*);
    const char* message;
    void (*put)(xio_fld_def&, short);
};

template <short xio_fld_def::*Field>
void Signed(xio_fld_def& def, short value) {
    def.*Field = value;
}
template <unsigned short xio_fld_def::*Field>
void Unsigned(xio_fld_def& def, short value) {
    def.*Field = static_cast<unsigned short>(value);
}
void Nowhere(xio_fld_def&, short) {}

// The readings in the order the record is filled; get_Type and get_Length
// come first, and get_Choices between the two tables.
const FieldReading kBeforeChoices[] = {
    {&IPropertyTypeInfo::get_Key, "IPropertyTypeInfo::get_Key failed.", &Signed<&xio_fld_def::key>},
    {&IPropertyTypeInfo::get_Code, "IPropertyTypeInfo::get_Code failed.", &Signed<&xio_fld_def::code>},
    {&IPropertyTypeInfo::get_Formatted, "IPropertyTypeInfo::get_Formatted failed.",
     &Signed<&xio_fld_def::formatted>},
    {&IPropertyTypeInfo::get_SectionNumber, "IPropertyTypeInfo::get_SectionNumber failed.",
     &Unsigned<&xio_fld_def::section>},
    {&IPropertyTypeInfo::get_DescriptionBreak, "IPropertyTypeInfo::get_DescriptionBreak failed.",
     &Unsigned<&xio_fld_def::label_break>},
    {&IPropertyTypeInfo::get_DefaultWidth, "IPropertyTypeInfo::get_DefaultWidth failed.",
     &Unsigned<&xio_fld_def::default_width>},
    {&IPropertyTypeInfo::get_MinimumHeadWidth, "IPropertyTypeInfo::get_MinimumHeadWidth failed.",
     &Unsigned<&xio_fld_def::min_head_width>},
    {&IPropertyTypeInfo::get_AuditRequired, "IPropertyTypeInfo::get_AuditRequired failed.", &Nowhere},
    {&IPropertyTypeInfo::get_Text, "IPropertyTypeInfo::get_Text failed.", &Nowhere},
    {&IPropertyTypeInfo::get_RightJustify, "IPropertyTypeInfo::get_RightJustify failed.",
     &Signed<&xio_fld_def::right_justify>},
    {&IPropertyTypeInfo::get_Capitals, "IPropertyTypeInfo::get_Capitals failed.", &Signed<&xio_fld_def::capitalize>},
    {&IPropertyTypeInfo::get_Choice, "IPropertyTypeInfo::get_Choice failed.", &Signed<&xio_fld_def::has_choices>},
};
const FieldReading kAfterChoices[] = {
    {&IPropertyTypeInfo::get_Decimal, "IPropertyTypeInfo::get_Decimal failed.", &Signed<&xio_fld_def::decimal>},
    {&IPropertyTypeInfo::get_Signed, "IPropertyTypeInfo::get_Signed failed.", &Signed<&xio_fld_def::is_signed>},
    {&IPropertyTypeInfo::get_Commas, "IPropertyTypeInfo::get_Commas failed.", &Signed<&xio_fld_def::commas>},
    {&IPropertyTypeInfo::get_PrintZero, "IPropertyTypeInfo::get_PrintZero failed.",
     &Signed<&xio_fld_def::zero_shown>},
    {&IPropertyTypeInfo::get_MonthYear, "IPropertyTypeInfo::get_MonthYear failed.",
     &Signed<&xio_fld_def::month_year>},
    {&IPropertyTypeInfo::get_ElapsedTime, "IPropertyTypeInfo::get_ElapsedTime failed.", &Nowhere},
};

void Read(IPropertyTypeInfo* info, const FieldReading& reading, xio_fld_def& def) {
    short value = 0;
    Require((info->*reading.get)(&value), reading.message);
    reading.put(def, value);
}

// The property's choices, in item order.
std::vector<CString> ReadChoices(IPropertyTypeInfo* info) {
    ATL::CComPtr<IStringCollection> choices;
    Require(info->get_Choices(&choices), "IPropertyTypeInfo::get_Choices failed.");
    long count = 0;
    if (!choices) throw CString("IPropertyTypeInfo::get_Choices failed.");
    Require(choices->get_Count(&count), "IStringCollection::get_Count failed.");
    std::vector<CString> texts;
    for (long i = 0; i < count; ++i) {
        CString text;
        Require(choices->Item(i, &text), "IStringCollection::Item failed.");
        texts.push_back(text);
    }
    return texts;
}

}  // namespace

_oxdmPOCOMBridge::_oxdmPOCOMBridge(oxdmCursorNode* cursor, IUnknown* factory, IUnknown* container,
                                   const std::vector<CString>& properties, IUnknown* typeInfo, int style,
                                   const CreateFunctor& createObject)
    : factory(PoQuery<IPOFactory>(factory)),
      properties(properties),
      sink(new CPOComBridgeEventSink(this)),
      createObject(createObject),
      cursor(cursor) {
    try {
        TakeContainer(container);
        if (this->properties.empty()) NamesFromTypeInfo(typeInfo);
        BuildColumns(style);
        StartIterator();
        AdviseContainer();
    } catch (...) {
        UnadviseContainer();
        sink->Disconnect();
        throw;
    }
}

void _oxdmPOCOMBridge::TakeContainer(IUnknown* container) {
    objectSet = PoQuery<IPersistentObjectSet>(container);
    if (!objectSet) throw CString("Object doesn't support IPersistentObjectSet.");
    iteratorFind = PoQuery<IRelativeIteratorFind>(container);
    if (!iteratorFind) throw CString("Object doesn't support IRelativeIteratorFind.");
    iteratorPosition = PoQuery<IRelativeIteratorPosition>(container);
    if (!iteratorPosition) throw CString("Object doesn't support IRelativeIteratorPosition.");
}

void _oxdmPOCOMBridge::NamesFromTypeInfo(IUnknown* typeInfo) {
    typeInfoCollection = PoQuery<IPropertyTypeInfoCollection>(typeInfo);
    long count = 0;
    if (typeInfoCollection && PoFailed(typeInfoCollection->Count(&count)))
        throw CString("Couldn't retrieve property names from property type info.");
    for (long i = 0; i < count; ++i) {
        ATL::CComPtr<IPropertyTypeInfo> info;
        CString name;
        Require(typeInfoCollection->Item(i, &info), "Couldn't retrieve property names from property type info.");
        if (!info || PoFailed(info->get_Name(&name)))
            throw CString("Couldn't retrieve property names from property type info.");
        properties.push_back(name);
    }
    if (properties.empty()) throw CString("Data source doesn't have any properties");
}

void _oxdmPOCOMBridge::BuildColumns(int style) {
    auto sorting = PoQuery<ISupportSorting>(objectSet);
    if (!sorting) throw CString("Container does not support ISupportSorting.");
    ATL::CComPtr<IStringCollection> sort;
    if (PoFailed(sorting->GetSort(&sort)) || !sort) throw CString("Could not retrieve sort from container.");
    long sortCount = 0;
    if (PoFailed(sort->get_Count(&sortCount))) throw CString("Could not retrieve sort from container.");
    if (sortCount == 0) throw CString("Sort contains no properties.");

    ATL::CComPtr<IStringCollection> asked;
    if (PoFailed(PoCreateInstance(CLSID_POStringCollection, IStringCollection::kIID, reinterpret_cast<void**>(&asked))))
        throw CString("Could not create String Collection object");
    for (const CString& name : properties) Require(asked->Add(name), "String Collection Add failure");

    auto typeSource = PoQuery<ISupportPropertyTypeInfo>(objectSet);
    if (!typeSource) throw CString("Container does not support ISupportPropertyTypeInfo.");
    typeInfoCollection.Release();
    Require(typeSource->GetPropertyTypeInfoCollection(asked, &typeInfoCollection),
            "ISupportPropertyTypeInfo::GetPropertyTypeInfoCollection failure.");
    if (!typeInfoCollection) throw CString("ISupportPropertyTypeInfo::GetPropertyTypeInfoCollection failure.");
    long count = 0;
    Require(typeInfoCollection->Count(&count), "IPropertyTypeInfoCollection::Count failure.");
    if (count < static_cast<long>(properties.size()))
        throw CString("Failed to retrieve type information for one or more of the specified properties.");

    for (size_t i = 0; i < properties.size(); ++i) {
        ATL::CComPtr<IPropertyTypeInfo> info;
        Require(typeInfoCollection->Item(static_cast<long>(i), &info), "IPropertyTypeInfoCollection::Item failure.");
        if (!info) throw CString("IPropertyTypeInfoCollection::Item failure.");
        int type = 0;
        Require(info->get_Type(&type), "IPropertyTypeInfo::get_Type failed.");
        xio_fld_def def;
        std::memset(&def, 0, sizeof def);
        def.type = oxPOTypeConverters::ChooseOXType(type);
        if (def.type < 0) throw "Property " + properties[i] + " has a type the store doesn't define.";
        short length = 0;
        Require(info->get_Length(&length), "IPropertyTypeInfo::get_Length failed.");
        def.length = static_cast<unsigned short>(length);
        for (const FieldReading& reading : kBeforeChoices) Read(info, reading, def);
        std::vector<CString> choices;
        if (def.has_choices != 0) choices = ReadChoices(info);
        for (const FieldReading& reading : kAfterChoices) Read(info, reading, def);
        std::strncpy(def.description, properties[i].c_str(), sizeof def.description - 1);
        def.items = static_cast<short>(choices.size());

        std::unique_ptr<oxdmColumnDef> column;
        if (def.has_choices != 0) {
            auto choice = std::make_unique<oxdmChoiceColumnDef>(nullptr, def, properties[i]);
            for (const CString& text : choices) choice->AddChoice(text);
            column = std::move(choice);
        } else {
            column = std::make_unique<oxdmColumnDef>(nullptr, def, properties[i]);
        }
        types.push_back(type);
        indexOfName[properties[i]] = static_cast<long>(i);
        columnDefs.push_back(column.get());
        auto property = std::make_unique<oxdmPOPropertyColumn>(column.get());
        property->SetStyle(style);
        columns.push_back(property.get());
        cursor->AddColumn(column.get());
        columnDefs_.push_back(std::move(column));
        columns_.push_back(std::move(property));
    }
    ReadSortColumns(sort);
}

void _oxdmPOCOMBridge::ReadSortColumns(IStringCollection* sort) {
    std::vector<CString> names;
    PoReadStrings(sort, names);
    sortColumns.clear();
    for (const CString& name : names) {
        auto it = indexOfName.find(name);
        if (it != indexOfName.end()) sortColumns.push_back(columnDefs[static_cast<size_t>(it->second)]);
    }
}

void _oxdmPOCOMBridge::StartIterator() {
    iterator.Release();
    Require(objectSet->Begin(&iterator), "Error occurred retrieving the beginning of the container.");
}

void _oxdmPOCOMBridge::AdviseContainer() {
    IUnknown* events = static_cast<ISortingEvents*>(sink.get());
    if (auto sorting = PoQuery<ISupportSorting>(objectSet))
        Require(sorting->Advise(events, &sortCookie), "ISupportSorting::Advise failed.");
    if (auto filtering = PoQuery<ISupportFiltering>(objectSet))
        Require(filtering->Advise(events, &filterCookie), "ISupportFiltering::Advise failed.");
}

void _oxdmPOCOMBridge::UnadviseContainer() {
    if (sortCookie != 0)
        if (auto sorting = PoQuery<ISupportSorting>(objectSet)) sorting->Unadvise(sortCookie);
    if (filterCookie != 0)
        if (auto filtering = PoQuery<ISupportFiltering>(objectSet)) filtering->Unadvise(filterCookie);
    sortCookie = filterCookie = 0;
}

void _oxdmPOCOMBridge::ReplacePOSet(IUnknown* container) {
    UnadviseContainer();
    ReleaseFocusObject();
    backupObject.Release();
    focusIterator.Release();
    TakeContainer(container);
    StartIterator();
    AdviseContainer();
}
