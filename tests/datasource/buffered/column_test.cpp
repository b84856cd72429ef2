// Live columns: labels, text conversions by the field's definition, and
// assignments that the value refuses.

#include "buffer_fixture.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"

TEST_F(BufferTest, ColumnsConvertByTheirFieldDefinition) {
    Seed(2);
    oxdmBufferedFileDataSource& buffer = Open(5);
    // Labels: a field's description; the empty text once set stays.
    EXPECT_EQ(buffer.ColLabel(buffer.IndexForColumn("CITY")).str(), "City");
    buffer.ColumnForIndex(buffer.IndexForColumn("CITY"))->SetLabel("");
    EXPECT_EQ(buffer.ColLabel(buffer.IndexForColumn("CITY")).str(), "");

    // Choices go by item text, and an unset choice reads as the default.
    const short status = buffer.IndexForColumn("STATUS");
    EXPECT_EQ(Focus("STATUS"), "Active");
    ASSERT_TRUE(buffer.ObserverSetNewValue(status, "On hold", 0, true));
    EXPECT_EQ(dynamic_cast<const oxChoice&>(*buffer.NewValue(status)).GetVal(), 2);
    std::vector<CString> choices;
    buffer.ColumnForIndex(status)->Choices(choices);
    EXPECT_EQ(choices.size(), 3u);

    // A zero amount of a field that shows zeros, and of one that does not.
    oxdmDSColumnBase& balance = *buffer.Column("BALANCE");
    EXPECT_EQ(balance.ValueAsString().str(), "0.00");
    EXPECT_TRUE(balance.IsReadOnly());
    // While auditing is on, a protected field may be edited.
    oxdmGlobalData::Instance()->OverrideAuditing(true);
    EXPECT_FALSE(balance.IsReadOnly());
    oxdmGlobalData::Instance()->OverrideAuditing(false);
    EXPECT_TRUE(balance.IsReadOnly());
    EXPECT_TRUE(balance.Required() == false);
    EXPECT_TRUE(buffer.Column("CUSTNO")->Required());

    // A refused assignment names the value and the column and changes nothing.
    oxdmDSColumnBase& since = *buffer.Column("SINCE");
    const std::string before = since.ValueAsString().str();
    try {
        since = CString("13/45/20x");
        FAIL() << "no exception";
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message().str(), "Couldn't assign value '13/45/20x' to column SINCE");
    }
    EXPECT_EQ(since.ValueAsString().str(), before);
}

TEST_F(BufferTest, PlainColumnKeepsItsOwnValue) {
    Seed(1);
    oxdmBufferedFileDataSource& buffer = Open(5);
    auto* plain = new oxdmDSColumnBase("NOTE", buffer, 0, nullptr);
    const short col = buffer.AddColumn(plain);
    EXPECT_EQ(buffer.ColLabel(col).str(), "NOTE");  // never labelled: its id
    std::vector<CString> choices;
    plain->Choices(choices);
    EXPECT_EQ(choices, std::vector<CString>{CString("")});  // the current text only
    *plain = CString("hello");
    EXPECT_TRUE(*plain == CString("hello"));
    EXPECT_TRUE(*plain < CString("world"));
    EXPECT_TRUE(*plain > oxAlpha("abc"));
    EXPECT_EQ(plain->Type(), 0);
    // Auto-hide with an empty filter: the filter answers false, so shown.
    plain->SetAutoHideFilter(oxdmFilter(), true);
    EXPECT_TRUE(plain->AutoHide());
    EXPECT_FALSE(plain->IsHidden(false));
    plain->SetAutoHideFilter(oxdmFilter(), false);
    EXPECT_TRUE(plain->AutoHide());
}
