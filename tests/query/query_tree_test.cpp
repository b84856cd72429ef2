// The query tree over the sample dictionary: roots, children and the kind
// their join decides, unique node and column ids, the stamp columns that
// travel with every node, all columns on demand, and searching.

#include "oxdm/common/store/file_spec.h"
#include "oxdm/query/query.h"
#include "oxdm/query/special_columns.h"
#include "oxdm/query/table_column.h"
#include "oxdm/record/dictionary_manager.h"
#include "oxdm/record/file_manager.h"
#include "query_test_support.h"

namespace {

class QueryTreeTest : public RecordTestBase {
protected:
    oxioFileSpec Sales() const { return oxioFileSpec((Scratch() / "sales.ord").string().c_str()); }
    oxdmTableDef* Ord(short num) { return oxdmDictionaryManager::Instance().Table("ord", num); }

    static std::vector<std::string> Ids(const oxdmQueryNode* node) {
        std::vector<std::string> ids;
        for (const oxdmQueryColumnBase* column : node->QueryColumns()) ids.push_back(column->ID().str());
        return ids;
    }

    oxdmQuery query_{"orders"};
};

using Strings = std::vector<std::string>;

TEST_F(QueryTreeTest, RootsTakeTheirTableFromTheSpecsDictionary) {
    oxdmQueryNode* root = query_.SetRoot(Sales(), 2, 1, "", 0x0f);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->ID(), "ord2");
    EXPECT_EQ(root->Table(), Ord(2));
    EXPECT_EQ(root->Index(), 1);
    EXPECT_TRUE(root->CanDelete());
    EXPECT_FALSE(root->CascadedDelete());
    EXPECT_EQ(root->SourceNode(), nullptr);
    EXPECT_EQ(root->SourceRel(), nullptr);
    EXPECT_EQ(root->FileSpec().Path(), Sales().Path());
    EXPECT_TRUE(root->Filter().IsEmpty());

    // A new root replaces the whole tree.
    oxdmQueryNode* other = query_.SetRoot(Ord(3), Sales(), "lines", 0, 0);
    EXPECT_EQ(query_.Root(), other);
    EXPECT_EQ(query_.Node("lines"), other);
    EXPECT_EQ(query_.Node("ord2"), nullptr);
    EXPECT_EQ(query_.SetRoot(Ord(1), Sales(), 0, 0)->ID(), "ord1");
}

TEST_F(QueryTreeTest, SameTableTwiceGetsASuffixAndOneMessage) {
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    oxdmQueryNode* first = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "", 0);
    oxdmQueryNode* second = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "", 0);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->ID(), "ord3");
    EXPECT_EQ(second->ID(), "ord3-1");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, "Node id 'ord3' changed to 'ord3-1' to ensure uniqueness");
    EXPECT_EQ(Boxes()[0].title, "");
    EXPECT_EQ(Boxes()[0].style, 64u);

    // The whole tree is searched, both kinds of child.
    oxdmTableRelation* rel = oxdmDictionaryManager::Instance().NewRel();
    oxdmQueryNode* deep = first->NewOneToOne(rel, Ord(3), Sales(), "ord3", 0, 0);
    EXPECT_EQ(deep->ID(), "ord3-2");
    EXPECT_EQ(deep->SourceNode(), first);
    EXPECT_EQ(deep->SourceRel(), rel);
    EXPECT_EQ(Boxes().size(), 2u);
}

TEST_F(QueryTreeTest, ExplicitChildIdsAreTakenAsTheyStand) {
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    oxdmQueryNode* first = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "lines", 0);
    oxdmQueryNode* second = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "lines", 0);
    EXPECT_EQ(second->ID(), "lines");
    EXPECT_EQ(query_.Node("lines"), first);
    EXPECT_EQ(query_.Node("LINES"), nullptr);  // node ids keep their case
    EXPECT_EQ(query_.Node(""), order);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(QueryTreeTest, TheJoinDecidesOneToOneOrOneToMany) {
    oxdmQueryNode* customer = query_.SetRoot(Sales(), 1, 0, "", 0);
    oxdmQueryNode* extra = customer->AddChildNode(Sales(), 4, " CUSTNO = CUSTNO ", 0, "", 0);
    oxdmQueryNode* orders = customer->AddChildNode(Sales(), 2, "CUSTNO=CUSTNO", 1, "", 0);
    ASSERT_EQ(customer->OneToOnes().size(), 1u);
    ASSERT_EQ(customer->OneToManys().size(), 1u);
    EXPECT_EQ(customer->OneToOnes()[0], extra);
    EXPECT_EQ(customer->OneToManys()[0], orders);
    ASSERT_NE(extra->SourceRel(), nullptr);
    EXPECT_EQ(extra->SourceRel()->DestColumns()[0], Ord(4)->Column("CUSTNO"));
    EXPECT_EQ(orders->Index(), 1);

    // Malformed text: no node, but the relation stays with the dictionary.
    const size_t rels = oxdmDictionaryManager::Instance().Rels().size();
    EXPECT_EQ(customer->AddChildNode(Sales(), 2, "CUSTNO", 0, "", 0), nullptr);
    EXPECT_EQ(oxdmDictionaryManager::Instance().Rels().size(), rels + 1);
    EXPECT_EQ(customer->OneToManys().size(), 1u);
}

TEST_F(QueryTreeTest, StampColumnsTravelWithTheFirstColumn) {
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    order->AddColumn("ORDNO", 1);
    EXPECT_EQ(Ids(order), Strings({"ORDNO", "TSTAMP", "DSTAMP"}));
    order->AddColumn("TOTAL", 1);
    EXPECT_EQ(Ids(order).size(), 4u);

    // A stamp added by hand first is not doubled.
    oxdmQueryNode* line = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "", 0);
    line->AddColumn("dstamp", 1);
    EXPECT_EQ(Ids(line), Strings({"dstamp-1", "TSTAMP-1"}));

    // A table without stamps gains nothing.
    oxdmQueryNode* extra = query_.SetRoot(Sales(), 4, 0, "", 0);
    extra->AddColumn("REGION", 1);
    EXPECT_EQ(Ids(extra), Strings({"REGION"}));
}

TEST_F(QueryTreeTest, ColumnIdsAreUniqueInTheTree) {
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    order->AddColumn(new oxdmTableColumnQueryColumn("TOTAL", "AMT", 1));
    oxdmQueryNode* line = order->AddChildNode(Sales(), 3, "ORDNO=ORDNO", 0, "", 0);
    line->AddColumn(new oxdmTableColumnQueryColumn("PRICE", "amt", 1));
    EXPECT_EQ(Ids(order)[0], "AMT");
    EXPECT_EQ(Ids(line)[0], "amt-1");  // ids compare without case
    EXPECT_EQ(query_.Column("AMT-1", false), line->QueryColumns()[0]);
    EXPECT_EQ(query_.Column("tstamp-1", false)->Name(), "TSTAMP");

    try {
        query_.Column("NOPE", false);
        ADD_FAILURE();
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message(), "Column 'NOPE' is not part of query 'orders'");
    }
    // Searching children is as asked.
    EXPECT_EQ(order->Column("amt-1", false, true, false), nullptr);
    EXPECT_NE(order->Column("amt-1", false, false, true), nullptr);
}

TEST_F(QueryTreeTest, AddColumnsKeepsBlanksWhichFailWhenResolved) {
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    order->AddColumns("ORDNO, TOTAL,#ATTACH");
    EXPECT_EQ(Ids(order), Strings({"ORDNO", "TSTAMP", "DSTAMP", " TOTAL", "#ATTACH"}));
    EXPECT_EQ(query_.Column("ORDNO", false)->Style(), 1);
    EXPECT_EQ(query_.Column("#attach", false)->Type(), oxdmAttachmentsQueryColumn::kType);
    try {
        query_.Column(" TOTAL", false)->Type();
        ADD_FAILURE();
    } catch (const oxdmException& e) {
        EXPECT_EQ(e.Message(), "' TOTAL' is not a column in table 'Order'.");
    }
}

TEST_F(QueryTreeTest, AllColumnsAreGeneratedOnDemandAndOnce) {
    oxdmQueryNode* customer = query_.SetRoot(Sales(), 1, 0, "", 0);
    customer->AddAllColumns(true, false, false);
    EXPECT_TRUE(customer->QueryColumns().empty());
    EXPECT_EQ(customer->Column("CITY", false, true, true), nullptr);
    ASSERT_NE(customer->Column("CITY", true, true, true), nullptr);
    // Every column but the operator stamp, in table order, once.
    EXPECT_EQ(Ids(customer), Strings({"CUSTNO", "NAME", "CITY", "STATUS", "BALANCE", "SINCE", "DSTAMP", "TSTAMP"}));
    customer->Column("CITY", true, true, true);
    std::vector<oxdmColumnBase*> listed;
    customer->Columns(listed, false, true, true);
    EXPECT_EQ(listed.size(), 8u);

    // With operator fields, and a column given before generation kept single.
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    order->AddColumn(new oxdmTableColumnQueryColumn("TOTAL", "AMT", 1));
    order->AddAllColumns(true, true, true);
    EXPECT_EQ(Ids(order), Strings({"AMT", "TSTAMP", "DSTAMP", "ORDNO", "CUSTNO", "ODATE", "OPERID"}));
}

TEST_F(QueryTreeTest, RefreshingColumnsPicksUpNewCustomFields) {
    const std::string head = "[[table]]\ndescription = \"Extra\"\ncustom_fields = 1\n"
                             "  [[table.field]]\n  name = \"ID\"\n  type = \"alpha\"\n  length = 4\n  key = true\n";
    WriteDict("qcust", head);
    oxdmQueryNode* extra = query_.SetRoot(oxioFileSpec("x.qcust"), 1, 0, "", 0);
    extra->AddAllColumns(true, true, false);
    EXPECT_EQ(Ids(extra), Strings({"ID"}));
    WriteDict("qcust", head + "  [[table.field]]\n  name = \"ZONE\"\n  type = \"alpha\"\n  length = 3\n");

    std::vector<oxdmColumnBase*> listed;
    extra->Columns(listed, false, true, true);
    EXPECT_EQ(listed.size(), 1u);
    listed.clear();
    extra->Columns(listed, true, true, true);
    EXPECT_EQ(Ids(extra), Strings({"ID", "ZONE"}));
    EXPECT_EQ(listed.size(), 2u);
}

TEST_F(QueryTreeTest, AuditableLooksAtEveryChild) {
    oxdmQueryNode* line = query_.SetRoot(Sales(), 3, 0, "", 0);
    EXPECT_FALSE(query_.Auditable());
    line->AddChildNode(Sales(), 2, "ORDNO=ORDNO", 0, "", 0);
    EXPECT_TRUE(query_.Auditable());
    EXPECT_FALSE(oxdmQuery("empty").Auditable());
}

TEST_F(QueryTreeTest, FilesOfNodesOpenAheadOfTime) {
    oxdmFileManager files(short(0));
    oxdmQueryNode* order = query_.SetRoot(Sales(), 2, 0, "", 0);
    EXPECT_FALSE(files.AddQueryNodeFile(order));  // not there and not to be created
    order->SetCreateFile(true);
    files.ClearOpenFailures();
    EXPECT_TRUE(files.AddQueryNodeFile(order));
    EXPECT_TRUE(files.AddQueryNodeFile(order));  // a further file, nothing registered
}

}  // namespace
