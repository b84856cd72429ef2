// The persistent object cursor driven through the cursor node's operations
// and the callbacks a buffer would raise: walking, finding, editing with a
// refused value, saving, conflicts answered each way, deleting, reverting,
// and the set's sort and filter changes arriving as events.

#include <gtest/gtest.h>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/objects/po_cursor.h"
#include "oxdm/cursor/objects/po_property_column.h"
#include "oxdm/record/column_def.h"
#include "po_fixture.h"

using namespace po_test;

namespace {

class POCursor : public ::testing::Test {
protected:
    POCursor() : db(Customers()), set(Open(db)), theirs(Open(db)), cursor(nullptr, AsUnknown(set), kAll, 0) {
        oxdmDefaultPresenter().Clear();
    }
    ~POCursor() override { oxdmDefaultPresenter().Clear(); }

    const oxdmColumnDef* Def(const char* name) const {
        return static_cast<oxdmPOPropertyColumn*>(cursor.Column(name))->Column();
    }
    CString Value(const char* name) const { return cursor.DatumForColumn(Def(name))->Format(); }
    void Key(const char* name) {
        oxAlpha key(name);
        cursor.SetValueForColumn(Def("Name"), &key);
    }
    // An edit as the buffer makes it: the cursor's value, then the storing
    // callback that puts it into the object.
    int Edit(const char* column, const oxData& value) {
        if (const int refused = buffer.Column(column, oxdmColCallbacks::cbColBeforeChange, value)) return refused;
        cursor.SetValueForColumn(Def(column), const_cast<oxData*>(&value));
        return buffer.Column(column, oxdmColCallbacks::cbColAfterChange, value);
    }
    oxPOMemoryObject* Theirs(const char* name) {
        for (oxPOMemoryObject* object : theirs->View())
            if (object->Value("Name") == ATL::CComVariant(name)) return object;
        return nullptr;
    }
    const oxPOMemoryDatabase::Record& Stored(const char* name) {
        for (long id : db->Ids())
            if (db->Find(id)->values[0] == ATL::CComVariant(name)) return *db->Find(id);
        throw CString("no record ") + name;
    }
    const std::vector<oxdmShownBox>& Boxes() { return oxdmDefaultPresenter().Boxes(); }

    static inline const std::vector<CString> kAll = {"Name", "City", "Balance", "Kind"};
    std::shared_ptr<oxPOMemoryDatabase> db;
    ATL::CComPtr<oxPOMemorySet> set, theirs;
    oxdmPersistentObjectCursor cursor;
    FakeBuffer buffer;
};

}  // namespace

TEST_F(POCursor, WalksInSortOrderAndKeepsValuesAtTheEnds) {
    ASSERT_TRUE(cursor.First(false));
    EXPECT_EQ(Value("Name"), "Adams");
    EXPECT_EQ(Value("City"), "Denver");
    ASSERT_TRUE(cursor.Next(false));
    EXPECT_EQ(Value("Name"), "Baker");
    ASSERT_TRUE(cursor.Last(false));
    EXPECT_EQ(Value("Name"), "Clark");
    Key("Zed");
    EXPECT_FALSE(cursor.Next(false));
    EXPECT_EQ(Value("Name"), "Zed") << "no move, no refresh";
    EXPECT_TRUE(cursor.Changed());
    EXPECT_EQ(cursor.Next(-5, false), -2);
    EXPECT_EQ(Value("Name"), "Adams");
    EXPECT_FALSE(cursor.Changed()) << "a move reloads and clears the changed flag";
    EXPECT_EQ(cursor.NumRows(false), 3);
    EXPECT_EQ(cursor.Node(nullptr), &cursor);
    CString error;
    EXPECT_FALSE(cursor.DeleteAll(error, nullptr, nullptr));
}

TEST_F(POCursor, BookmarksAndPercentPositions) {
    cursor.First(false);
    std::unique_ptr<oxdmCursorBookmark> first(cursor.CreateBookmark());
    cursor.Last(false);
    std::unique_ptr<oxdmCursorBookmark> last(cursor.CreateBookmark());
    std::unique_ptr<oxdmCursorBookmark> copy(last->Clone());
    EXPECT_TRUE(first->LessThan(last.get()));
    EXPECT_TRUE(last->GreaterThan(first.get()));
    EXPECT_TRUE(copy->EqualTo(last.get()));
    EXPECT_FALSE(copy->GreaterThan(last.get()));
    EXPECT_EQ(cursor.GetRelativePosition(), 100.0);
    ASSERT_TRUE(first->GoTo());
    EXPECT_EQ(Value("Name"), "Adams");
    EXPECT_EQ(cursor.SetRelativePosition(50.0), 0);
    EXPECT_EQ(Value("Name"), "Baker");
}

TEST_F(POCursor, FindsByTheSortsProperties) {
    const struct {
        bool (oxdmPersistentObjectCursor::*find)(bool);
        const char* key;
        bool found;
        const char* after;
    } cases[] = {
        {&oxdmPersistentObjectCursor::EQ, "Baker", true, "Baker"},
        {&oxdmPersistentObjectCursor::EQ, "Bak", false, "Bak"},
        {&oxdmPersistentObjectCursor::GE, "Bak", true, "Baker"},
        {&oxdmPersistentObjectCursor::GT, "Baker", true, "Clark"},
        {&oxdmPersistentObjectCursor::GT, "Clark", false, "Clark"},
    };
    for (const auto& c : cases) {
        cursor.First(false);
        Key(c.key);
        EXPECT_EQ((cursor.*c.find)(false), c.found) << c.key;
        EXPECT_EQ(Value("Name"), c.after) << "a failed find leaves the values";
    }
    set->SortBy({});
    EXPECT_FALSE(cursor.EQ(false)) << "no sort properties, no find";
}

TEST_F(POCursor, FindWithoutSortingFaceThrowsItsSentence) {
    cursor.First(false);
    set->Faults().Hide(ISupportSorting::kIID);
    try {
        cursor.EQ(false);
        FAIL() << "expected a throw";
    } catch (const CString& message) {
        EXPECT_EQ(message, "Could not retrieve sorting parameters.");
    }
}

TEST_F(POCursor, AnEditRefusedByValidationNeverReachesTheObject) {
    cursor.SetDataSource(&buffer);
    std::vector<CString> refusals;
    cursor.SetPropertyValidationFailureCB([&](oxdmCallbackInfo*, IUnknown* errors) {
        CString text;
        PoQuery<IPOValidationErrors>(errors)->Message(0, &text);
        refusals.push_back(text);
    });
    cursor.First(false);
    EXPECT_NE(Edit("Balance", oxDouble(-5.0, 2)), 0);
    EXPECT_EQ(refusals, (std::vector<CString>{"The balance can't be negative"}));
    EXPECT_FALSE(cursor.Changed());
    EXPECT_EQ(Edit("Balance", oxDouble(42.0, 2)), 0);
    ATL::CComVariant stored;
    short readOnly = 0;
    PoQuery<IPOProperties>(cursor.FocusRowObject())->GetProperty("Balance", &readOnly, &stored);
    EXPECT_TRUE(stored == ATL::CComVariant(42.0));
    EXPECT_FALSE(buffer.readOnlyCalls.empty());
}

TEST_F(POCursor, SavesAndRefusesAnInvalidObjectAtRowValidation) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    Edit("City", oxAlpha("Reno"));
    CString error;
    EXPECT_EQ(cursor.Update(error, 0, false, false), oxioStatus::Success);
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_FALSE(cursor.Changed());
    EXPECT_TRUE(Stored("Adams").values[1] == ATL::CComVariant("Reno"));

    EXPECT_NE(Edit("Name", oxAlpha("")), 0) << "the name rule refuses the cell";
    // A program that writes the object directly goes round the cell; the
    // row validation finds it and points the control at the column.
    PoQuery<IPOProperties>(cursor.FocusRowObject())->SetProperty("Name", ATL::CComVariant(""));
    EXPECT_NE(buffer.Row(oxdmRowCallbacks::cbRowValidate), 0);
    EXPECT_EQ(buffer.invalid, (std::vector<short>{0}));
    EXPECT_EQ(cursor.Update(error, 0, false, false), oxioStatus::IOError);
    EXPECT_EQ(error, "Could not update the change(s) because A name is required");
}

TEST_F(POCursor, AConflictAnsweredNoSavesTheUsersChanges) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    Edit("Balance", oxDouble(77.0, 2));
    Theirs("Adams")->SetProperty("City", ATL::CComVariant("Reno"));
    ASSERT_EQ(Theirs("Adams")->Save(), S_OK);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdNo);
    CString error;
    EXPECT_EQ(cursor.Update(error, 0, false, false), oxioStatus::Success);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].style, 20u);
    EXPECT_EQ(Boxes()[0].title, "Warning");
    EXPECT_EQ(Boxes()[0].text.Find("Data Conflict Error\r\rWhile you were entering data"), 0);
    EXPECT_TRUE(Stored("Adams").values[2] == ATL::CComVariant(77.0));
    EXPECT_TRUE(Stored("Adams").values[1] == ATL::CComVariant("Reno"));
    EXPECT_EQ(Value("City"), "Reno");
}

TEST_F(POCursor, AConflictAnsweredYesLosesTheEdits) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    Edit("Balance", oxDouble(77.0, 2));
    Theirs("Adams")->SetProperty("Balance", ATL::CComVariant(5.0));
    ASSERT_EQ(Theirs("Adams")->Save(), S_OK);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    CString error;
    EXPECT_EQ(cursor.Update(error, 0, false, false), oxioStatus::DataConflict);
    EXPECT_TRUE(error.IsEmpty()) << "the user was asked; no words to add";
    EXPECT_FALSE(cursor.Changed());
    EXPECT_EQ(cursor.DatumForColumn(Def("Balance"))->Format(), oxDouble(5.0, 2).Format());
    EXPECT_TRUE(Stored("Adams").values[2] == ATL::CComVariant(5.0));
}

TEST_F(POCursor, AnObjectDeletedMeanwhileIsReinsertedOnOK) {
    for (int answer : {oxdmBox::IdOK, oxdmBox::IdCancel}) {
        auto db2 = Customers();
        auto mine = Open(db2), other = Open(db2);
        oxdmPersistentObjectCursor node(nullptr, AsUnknown(mine), kAll, 0);
        node.SetDataSource(&buffer);
        node.Last(false);
        oxAlpha city("Omaha");
        node.SetValueForColumn(static_cast<oxdmPOPropertyColumn*>(node.Column("City"))->Column(), &city);
        node.SetNewValueToFocusRowObjectProperty("City", &city);
        for (oxPOMemoryObject* o : other->View()) {
            if (o->Value("Name") == ATL::CComVariant("Clark")) {
                ASSERT_EQ(other->Remove(static_cast<IPOObject*>(o)), S_OK);
                break;
            }
        }
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(answer);
        CString error;
        const oxioStatus::Status status = node.Update(error, 0, false, false);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(Boxes()[0].title, "Data Conflict!");
        EXPECT_EQ(Boxes()[0].style, 49u);
        EXPECT_EQ(Boxes()[0].text, "This data has been deleted by someone else.\rPress OK to attempt to insert it "
                                   "again. Otherwise,\rpress Cancel to lose your changes.");
        EXPECT_EQ(status, answer == oxdmBox::IdOK ? oxioStatus::Success : oxioStatus::InvalidKey);
        EXPECT_EQ(db2->Ids().size(), answer == oxdmBox::IdOK ? 3u : 2u);
        if (answer == oxdmBox::IdOK) {
            EXPECT_TRUE(db2->Find(db2->Ids().back())->values[1] == ATL::CComVariant("Omaha"));
        }
    }
}

TEST_F(POCursor, DeleteMovesToTheNextObject) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    cursor.Next(false);
    CString error;
    ASSERT_TRUE(cursor.Delete(error, nullptr, nullptr, false));
    EXPECT_EQ(db->Ids().size(), 2u);
    cursor.Refresh();
    EXPECT_EQ(Value("Name"), "Clark");
    ASSERT_TRUE(cursor.Delete(error, nullptr, nullptr, false));
    cursor.Refresh();
    EXPECT_EQ(Value("Name"), "Adams") << "at the end the iterator goes back";
    // A store that refuses: the object's words, and the object stays.
    set->Faults().Fail("Remove", E_FAIL);
    EXPECT_FALSE(cursor.Delete(error, nullptr, nullptr, false));
    EXPECT_EQ(error, "Could not delete the data because Failed: Remove");
    EXPECT_EQ(db->Ids().size(), 1u);
    set->Faults().Heal("Remove");
    // Another program deleted it first: the delete is done all the same.
    error.Empty();
    ASSERT_EQ(theirs->Remove(static_cast<IPOObject*>(Theirs("Adams"))), S_OK);
    EXPECT_TRUE(cursor.Delete(error, nullptr, nullptr, false));
    EXPECT_TRUE(error.IsEmpty());
}

TEST_F(POCursor, RevertPutsTheBackupBack) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    buffer.Row(oxdmRowCallbacks::cbFocusRowMoved);
    Edit("City", oxAlpha("Reno"));
    Edit("Balance", oxDouble(1.0, 2));
    cursor.Revert(false);
    EXPECT_EQ(buffer.Row(oxdmRowCallbacks::cbRowAfterRevert), 0);
    EXPECT_EQ(Value("City"), "Denver");
    ATL::CComVariant city;
    short readOnly = 0;
    PoQuery<IPOProperties>(cursor.FocusRowObject())->GetProperty("City", &readOnly, &city);
    EXPECT_TRUE(city == ATL::CComVariant("Denver"));
    short dirty = VARIANT_TRUE;
    PoQuery<IPOObject>(cursor.FocusRowObject())->IsDirty(&dirty);
    EXPECT_EQ(dirty, VARIANT_FALSE);
    EXPECT_EQ(set->View().size(), 3u);
}

TEST_F(POCursor, ANewRowMakesAnObjectAndInsertsIt) {
    cursor.SetDataSource(&buffer);
    buffer.newRow = true;
    cursor.Refresh();
    EXPECT_EQ(Value("Kind"), "1") << "a new object has the defaults";
    Edit("Name", oxAlpha("Dunn"));
    Edit("City", oxAlpha("Tulsa"));
    CString error;
    EXPECT_EQ(cursor.Insert(error, false), oxioStatus::Success);
    EXPECT_EQ(buffer.refetches, 1);
    EXPECT_TRUE(Stored("Dunn").values[1] == ATL::CComVariant("Tulsa"));
    EXPECT_EQ(set->View().size(), 4u);
}

TEST_F(POCursor, SortAndFilterChangesArriveAsEvents) {
    cursor.SetDataSource(&buffer);
    set->SortBy({"City", "Name"});
    ASSERT_EQ(cursor.SortColumns().size(), 2u);
    EXPECT_EQ(cursor.SortColumns()[0]->Name(), "City");
    EXPECT_EQ(buffer.requeries, 1);
    cursor.First(false);
    EXPECT_EQ(Value("Name"), "Baker");

    buffer.rows = 0;
    set->SetFilter([](const oxPOMemoryObject&) { return false; });
    EXPECT_EQ(buffer.requeries, 2);
    EXPECT_EQ(buffer.appends, 1) << "an empty window gets a new row";
    EXPECT_FALSE(cursor.First(false));
}

TEST_F(POCursor, PropertyEventsOfTheFocusObjectReachTheRow) {
    cursor.SetDataSource(&buffer);
    cursor.First(false);
    auto props = PoQuery<IPOProperties>(cursor.FocusRowObject());
    props->SetProperty("City", ATL::CComVariant("Reno"));
    EXPECT_EQ(Value("City"), "Reno");
    EXPECT_EQ(buffer.refreshed, (std::vector<short>{1}));
    EXPECT_FALSE(cursor.Changed()) << "a value from the object is not an edit of the row";
}
