// Query columns: labels and their sentinel, widths, what the dictionary
// answers, default and hidden values, formatters, and the live columns they
// ask the data source layer for.

#include <memory>

#include "oxdm/common/fieldcode/date_time_edit_formatters.h"
#include "oxdm/common/fieldcode/edit_formatter.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/query/query.h"
#include "oxdm/query/special_columns.h"
#include "oxdm/record/table_def.h"
#include "oxdm/query/table_column.h"
#include "ord_data.h"
#include "query_test_support.h"

namespace {

// A plain query column that counts how often its label is made.
class CountingColumn : public oxdmQueryColumnBase {
public:
    using oxdmQueryColumnBase::oxdmQueryColumnBase;
    mutable int labelsMade = 0;
    std::unique_ptr<oxData> defaultValue;

protected:
    CString CreateLabel() const override {
        ++labelsMade;
        return oxdmQueryColumnBase::CreateLabel();
    }
    oxData* CreateDefaultValue() const override {
        return defaultValue ? defaultValue->Clone() : oxdmQueryColumnBase::CreateDefaultValue();
    }
};

class QueryColumnsTest : public RecordTestBase {
protected:
    oxdmQueryNode* Root(short table) {
        return query_.SetRoot(oxioFileSpec((Scratch() / "sales.ord").string().c_str()), table, 0, "", 0);
    }
    // Column `name` of a node of table `table`, in a query of its own that
    // lives as long as the test.
    oxdmQueryColumnBase* Col(short table, const char* name) {
        columnQueries_.push_back(std::make_unique<oxdmQuery>("c"));
        oxdmQueryNode* node = columnQueries_.back()->SetRoot(
            oxioFileSpec((Scratch() / "sales.ord").string().c_str()), table, 0, "", 0);
        node->AddColumn(name, 1);
        return node->QueryColumns()[0];
    }

    oxdmQuery query_{"q"};
    std::vector<std::unique_ptr<oxdmQuery>> columnQueries_;
};

TEST_F(QueryColumnsTest, LabelSentinelTellsUnsetFromEmpty) {
    CountingColumn column("AMT", 0);
    EXPECT_EQ(column.Label(), "AMT");
    EXPECT_EQ(column.labelsMade, 1);
    column.SetLabel("");
    EXPECT_EQ(column.Label(), "");
    EXPECT_EQ(column.labelsMade, 1);
    column.SetLabel(oxdmQueryColumnBase::kNoLabel);
    EXPECT_EQ(column.Label(), "AMT");
    EXPECT_EQ(column.labelsMade, 2);

    // A table column's label is its description in tag form.
    EXPECT_EQ(Col(3, "ITEM")->Label(), "Ordered <1I>");
    EXPECT_EQ(Col(3, "ITEM")->Desc(), "Ordered item number");
}

TEST_F(QueryColumnsTest, GridWidthsInPixels) {
    CountingColumn column("AMT", 0);
    // Data 12 * 4 + 4 = 52 against the label "AMT", 16.
    EXPECT_EQ(column.DefaultGridColumnWidth(), 52);
    EXPECT_EQ(column.DefaultMinGridColumnWidth(), 48);
    column.SetLabel(CString(std::string(40, 'L')));
    EXPECT_EQ(column.DefaultGridColumnWidth(), 164);

    // NAME: 30 wide, 30 long, head width 0.
    oxdmQueryColumnBase* name = Col(1, "NAME");
    EXPECT_EQ(name->DefaultMinGridColumnWidth(), 0);
    EXPECT_EQ(name->DefaultGridColumnWidth(), 30 * 4 + 4);
    // CUSTNO capitalises: 8 * 5 + 4 against "Customer number", 15 * 4 + 4.
    EXPECT_EQ(Col(1, "CUSTNO")->DefaultGridColumnWidth(), 64);
    // A choice column has room for the arrow.
    oxdmQueryColumnBase* status = Col(1, "STATUS");
    status->SetLabel("");
    EXPECT_EQ(status->DefaultGridColumnWidth(), 8 * 4 + 4 + kOxdmDropArrowWidth);
}

TEST_F(QueryColumnsTest, NameBuiltColumnNeedsANodeFirst) {
    oxdmTableColumnQueryColumn column("TOTAL", 1);
    EXPECT_EQ(column.ID(), "TOTAL");
    EXPECT_EQ(column.ColumnID(), "TOTAL");
    try {
        column.Type();
        ADD_FAILURE();
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message(), "oxdmColumnDef unknown.  oxdmTableColumnQueryColumn must be added to oxdmQueryNode first");
    }
}

TEST_F(QueryColumnsTest, DictionaryAnswers) {
    oxdmQueryColumnBase* balance = Col(1, "BALANCE");
    EXPECT_EQ(balance->Type(), XIO_NUMERIC);
    EXPECT_TRUE(balance->RightJustify());
    EXPECT_FALSE(balance->UnSigned());
    EXPECT_TRUE(balance->Commas());
    EXPECT_EQ(balance->Decimal(), 2);
    EXPECT_TRUE(balance->Visible());
    EXPECT_FALSE(balance->Stamp());
    EXPECT_EQ(balance->MinorHelpID(), 0);
    oxdmQueryColumnBase* oper = Col(1, "OPERID");
    EXPECT_FALSE(oper->Visible());
    EXPECT_FALSE(oper->Stamp());
    EXPECT_TRUE(Col(1, "TSTAMP")->Stamp());
    EXPECT_TRUE(Col(1, "CUSTNO")->Key());
    EXPECT_TRUE(Col(1, "CUSTNO")->Required());
    EXPECT_TRUE(Col(3, "QTY")->UnSigned());
    oxdmQueryColumnBase* item = Col(3, "ITEM");
    EXPECT_TRUE(item->Formatted());
    EXPECT_EQ(item->Code(), 1);
}

TEST_F(QueryColumnsTest, ChoicesComeFromTheDefinition) {
    oxdmQueryColumnBase* status = Col(1, "STATUS");
    EXPECT_EQ(status->Choices().size(), 3u);
    std::vector<CString> out;
    status->Choices(out);
    EXPECT_EQ(out[1], "On hold");
    EXPECT_TRUE(Col(1, "NAME")->Choices().empty());
    try {
        status->SetChoices({"A"});
        ADD_FAILURE();
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message(), "You can't set the choices of a oxdmTableColumnQueryColumn");
    }
    // A column of its own keeps what it is given.
    CountingColumn own("C", 0);
    own.SetChoices({"x", "y"});
    EXPECT_EQ(own.Choices().size(), 2u);
}

TEST_F(QueryColumnsTest, DefaultPrefillAndHiddenValues) {
    oxdmQueryColumnBase* status = Col(1, "STATUS");
    EXPECT_EQ(dynamic_cast<const oxChoice&>(status->PrefillValue()).GetVal(), 1);
    EXPECT_EQ(dynamic_cast<const oxChoice&>(status->DefaultValue()).GetVal(), 1);
    EXPECT_EQ(dynamic_cast<const oxChoice&>(status->ValueWhenHidden()).GetVal(), 0);
    status->SetPrefillValue(oxChoice(3));
    EXPECT_EQ(dynamic_cast<const oxChoice&>(status->PrefillValue()).GetVal(), 3);
    status->SetValueWhenHidden(oxChoice(2));
    EXPECT_EQ(dynamic_cast<const oxChoice&>(status->ValueWhenHidden()).GetVal(), 2);

    // Without a definition the type follows the default value's class.
    CountingColumn flag("F", 0);
    EXPECT_EQ(flag.Type(), 0);
    CountingColumn other("G", 0);
    other.defaultValue = std::make_unique<oxBool>(true);
    EXPECT_EQ(other.Type(), 2);
    EXPECT_EQ(other.ValueWhenHidden().Format(), "");
    CountingColumn choice("H", 0);
    choice.defaultValue = std::make_unique<oxChoice>(2);
    EXPECT_EQ(choice.Type(), 9);
}

TEST_F(QueryColumnsTest, StyleBitsAndAutoHideFilter) {
    CountingColumn column("C", 0);
    column.SetReadOnly(true);
    column.SetPrefillOn(true);
    column.SetHide(true);
    EXPECT_EQ(column.Style(), 0x04 | 0x02 | 0x08);
    EXPECT_TRUE(column.Hide());
    column.SetHide(false);
    EXPECT_FALSE(column.Hide());
    column.SetAutoHideFilter(oxdmFilter("C", oxdmFilter::EQ, oxAlpha("x")), false);
    EXPECT_FALSE(column.AutoHide());
    EXPECT_EQ(column.AutoHideFilter().Items().size(), 1u);
    column.SetAutoHideFilter(oxdmFilter(), true);
    EXPECT_TRUE(column.AutoHide());
    EXPECT_TRUE(column.AutoHideFilter().IsEmpty());
}

TEST_F(QueryColumnsTest, FormattersFollowTheDefinition) {
    std::unique_ptr<oxEditFormatter> since(Col(1, "SINCE")->BuildFormatter());
    EXPECT_NE(dynamic_cast<oxDateEditFormatter*>(since.get()), nullptr);
    EXPECT_NE(std::unique_ptr<oxEditFormatter>(Col(1, "BALANCE")->BuildFormatter()), nullptr);
    EXPECT_EQ(std::unique_ptr<oxEditFormatter>(Col(1, "STATUS")->BuildFormatter()), nullptr);
    // A column of its own: the text formatter of its answers.
    EXPECT_NE(std::unique_ptr<oxEditFormatter>(CountingColumn("C", 0).BuildFormatter()), nullptr);
}

TEST_F(QueryColumnsTest, BuildingLiveColumnsNeedsTheDataSourceLayer) {
    CountingColumn column("C", 0);
    try {
        RecordingLiveColumns* none = nullptr;
        column.BuildColumn(*reinterpret_cast<oxdmBufferedFileDataSource*>(&none));
        ADD_FAILURE();
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message(), "Live columns can't be built: no buffered data source layer is installed.");
    }
}

TEST_F(QueryColumnsTest, BuildColumnAsksForTheColumnThenHandsOverItsSettings) {
    RecordingLiveColumns live;
    CountingColumn column("C", 6);
    column.SetChoices({"a", "b"});
    column.SetAutoHideFilter(oxdmFilter("C", oxdmFilter::NE, CString("D")), true);
    column.BuildColumn(live.Source());
    EXPECT_EQ(live.calls, std::vector<std::string>({"column C style 22 default ''", "choices 2", "filter of 1",
                                                    "hidden ''"}));

    live.calls.clear();
    oxdmCallbackQueryColumn callback([](oxdmDSColumnCallback&, oxData&) {}, {}, "CB", 0);
    callback.BuildColumn(live.Source());
    EXPECT_EQ(live.calls.front(), "callback CB with read");

    live.calls.clear();
    oxdmQueryNode* node = Root(2);
    node->AddColumn("#ATTACH", 4);
    node->QueryColumns()[0]->BuildColumn(live.Source());
    EXPECT_EQ(live.calls.front(), "attachments #ATTACH style 4");
}

TEST_F(QueryColumnsTest, TableColumnIsACursorColumnWithItsPrefill) {
    ::setenv("OXDM_OPERATOR", "TESTER", 1);
    std::unique_ptr<oxioDataFile> file = OpenOrdFile((Scratch() / "sales.ord").string());
    RecordingLiveColumns live(file.get());
    oxdmQueryColumnBase* total = Col(2, "TOTAL");
    total->BuildColumn(live.Source());
    EXPECT_EQ(live.calls, std::vector<std::string>({"cursor TOTAL style 1", "choices 0", "filter of 0",
                                                    "hidden '0.00'"}));
    live.calls.clear();
    total->SetPrefillValue(oxDouble(5.0, 2));
    total->BuildColumn(live.Source());
    EXPECT_EQ(live.calls[1], "prefill '5.00'");
}

TEST_F(QueryColumnsTest, FieldTheDataFileLacksGivesAVoidColumn) {
    // The store upgrades an older file when it opens it, so the node's file
    // is stood in for by a file of "ord", which has no field ZONE.
    ::setenv("OXDM_OPERATOR", "TESTER", 1);
    std::unique_ptr<oxioDataFile> file = OpenOrdFile((Scratch() / "sales.ord").string());
    WriteDict("xoq", "[[table]]\ndescription = \"Extra\"\ncustom_fields = 1\n"
                     "  [[table.field]]\n  name = \"ID\"\n  type = \"alpha\"\n  length = 4\n  key = true\n"
                     "  [[table.field]]\n  name = \"ZONE\"\n  type = \"alpha\"\n  length = 3\n");
    RecordingLiveColumns live(file.get());
    oxdmQueryNode* node = query_.SetRoot(oxioFileSpec("new.xoq"), 1, 0, "", 0);
    node->AddColumn("ZONE", 1);
    node->QueryColumns()[0]->BuildColumn(live.Source());
    EXPECT_EQ(live.calls.front(), "void ZONE of or Ord file");
    EXPECT_LE(Boxes().size(), 1u);
    // A field the file has is a cursor column.
    live.calls.clear();
    oxdmQueryNode* order = query_.SetRoot(oxioFileSpec("x.ord"), 2, 0, "", 0);
    order->AddColumn("ORDNO", 1);
    order->QueryColumns()[0]->BuildColumn(live.Source());
    EXPECT_EQ(live.calls.front(), "cursor ORDNO style 1");
}

TEST_F(QueryColumnsTest, MissingCustomFieldsAreToldOncePerProcess) {
    // Each test runs in a process of its own under ctest, where the first
    // call shows the box; in a shared process an earlier test may have.
    const bool shown = oxdmVoidColumnNotice("or Ord file");
    EXPECT_FALSE(oxdmVoidColumnNotice("xo Xoq file"));
    EXPECT_FALSE(oxdmVoidColumnNotice("or Ord file"));
    ASSERT_EQ(Boxes().size(), shown ? 1u : 0u);
    const CString text = oxdmVoidColumnText("or Ord file");
    EXPECT_EQ(text, "The or Ord file does not contain all custom fields.\n\n"
                    "To add these fields, please do one of the following:\n"
                    "\xE2\x80\xA2  From OX-Main, select Tools > Upgrade Files.\n"
                    "\xE2\x80\xA2  From Desktop's Tasks pane, double-click the Quillfen Office\\Common "
                    "Tasks\\Tools\\Upgrade Files task.");
    if (!Boxes().empty()) {
        EXPECT_EQ(Boxes()[0].text, text);
        EXPECT_EQ(Boxes()[0].title, "or Ord file");
        EXPECT_EQ(Boxes()[0].style, 64u);
    }
}

}  // namespace
