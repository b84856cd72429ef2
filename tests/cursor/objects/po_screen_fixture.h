#pragma once
// A screen over the memory store: a buffered data source on a persistent
// object cursor over the customer set, linked to the cursor's bridge and
// given the child role, its window large enough for every row. A second
// handle on the same database stands for another program.

#include <gtest/gtest.h>

#include "oxdm/common/shell/presenter.h"
#include "oxdm/cursor/objects/po_cursor.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/child_po_role.h"
#include "oxdm/datasource/buffered/po_buffer_adapter.h"
#include "po_fixture.h"

namespace po_test {

class POScreen : public ::testing::Test {
protected:
    POScreen()
        : db(Customers()), set(Open(db)), cursor(nullptr, AsUnknown(set), kAll, 0), buffer(nullptr, &cursor, false),
          link(buffer) {
        oxdmDefaultPresenter().Clear();
        buffer.SetRole(new oxdmChildPOBufferedDSRole(static_cast<oxdmBufferedFileDataSourceImpl*>(buffer.GetImpl())));
        buffer.SetCanUpdateRow(true);
        buffer.SetCanDeleteRow(true);
        buffer.SetWindowSize(10);
        buffer.ReQuery();
    }
    ~POScreen() override { oxdmDefaultPresenter().Clear(); }

    short Col(const char* name) const { return buffer.IndexForColumn(name); }
    // The focus row's value of a column, as the screen shows it.
    CString Shown(const char* name) { return buffer.NewValueAsString(Col(name)).TrimRight(); }
    // The names of the window's rows, top to bottom.
    std::vector<CString> Window() {
        std::vector<CString> names;
        for (short row = 0; row < buffer.NumWindowDataRows(); ++row)
            names.push_back(buffer.CellValueAsString(row, Col("Name")).TrimRight());
        return names;
    }
    // What the database holds for the object first named `name`; empty
    // when there is none.
    ATL::CComVariant Stored(const char* name, long property) const {
        for (long id : db->Ids())
            if (db->Find(id)->values[0] == ATL::CComVariant(name))
                return db->Find(id)->values[static_cast<size_t>(property)];
        return ATL::CComVariant();
    }
    // The focus object's value of a property.
    ATL::CComVariant Live(const char* property) {
        ATL::CComVariant value;
        short readOnly = 0;
        PoQuery<IPOProperties>(cursor.FocusRowObject())->GetProperty(property, &readOnly, &value);
        return value;
    }
    // Another program's object named `name`.
    oxPOMemoryObject* Theirs(const char* name) {
        for (oxPOMemoryObject* object : other->View())
            if (object->Value("Name") == ATL::CComVariant(name)) return object;
        ADD_FAILURE() << "the other program has no " << name;
        return nullptr;
    }
    // Another program changes and saves a property of `name`.
    void TheyWrite(const char* name, const char* property, const ATL::CComVariant& value) {
        oxPOMemoryObject* object = Theirs(name);
        ASSERT_NE(object, nullptr);
        ASSERT_EQ(object->SetProperty(property, value), S_OK);
        ASSERT_EQ(object->Save(), S_OK);
    }
    // The boxes shown so far.
    const std::vector<oxdmShownBox>& Boxes() const { return oxdmDefaultPresenter().Boxes(); }

    static inline const std::vector<CString> kAll = {"Name", "City", "Balance", "Kind"};
    std::shared_ptr<oxPOMemoryDatabase> db;
    ATL::CComPtr<oxPOMemorySet> set;
    ATL::CComPtr<oxPOMemorySet> other = Open(db);
    oxdmPersistentObjectCursor cursor;
    oxdmBufferedFileDataSource buffer;
    oxdmPOBufferAdapter link;
};

}  // namespace po_test
