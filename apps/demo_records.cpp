// The records part of oxdm-demo: the sample data of examples/ in a SQLite
// record file, walked as a tree of cursors (customers, their orders, the
// orders' lines), and a save that meets another program's change.
#include "demo_records.h"

#include <oxdm/oxdm.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "sample_data.h"

namespace {

// Opens (creating when missing) the record file; null after a message.
std::unique_ptr<oxioDataFile> OpenSales(const oxioFileSpec& spec) {
    oxioStatus::Status status = oxioStatus::Success;
    CString error;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(spec, true, status, error);
    if (!file) std::printf("  %s\n", error.c_str());
    return file;
}

void Attach(oxdmOXIOCursorNode& node, const char* name) {
    node.AddColumn(node.QueryNode()->Table()->Column(name));
}

CString Text(const oxdmOXIOCursorNode& node, const char* name) {
    const oxData* value = node.DatumForColumn(node.QueryNode()->Table()->Column(name));
    return value ? value->Format() : CString("?");
}

void Set(oxdmOXIOCursorNode& node, const char* name, const char* text) {
    const oxdmColumnDef* column = node.QueryNode()->Table()->Column(name);
    std::unique_ptr<oxData> value(column->CreateData());
    value->SetVal(CString(text), nullptr);
    node.SetValueForColumn(column, value.get());
}

// Another program renames the first customer on its own connection.
void OtherProgramRenames(const oxioFileSpec& spec, const CString& custno, const char* name) {
    std::unique_ptr<oxioDataFile> file = OpenSales(spec);
    if (!file) return;
    oxioCursor cursor(*file, 1, 0);
    oxAlpha key(custno), theirs(name);
    cursor.AttachColumn("CUSTNO", key);
    cursor.AttachColumn("NAME", theirs);
    if (cursor.FetchEQ(false) == oxioStatus::Success) {
        theirs.SetVal(CString(name));
        cursor.Update(nullptr, oxioCursor::CheckConflict);
    }
}

}  // namespace

bool ShowRecords(const char* dataDir) {
    std::printf("Records:\n");
    std::filesystem::create_directories(dataDir);
    const oxioFileSpec spec((std::string(dataDir) + "/sales.ord").c_str());
    if (!std::filesystem::exists(spec.FilePath().str())) {
        std::unique_ptr<oxioDataFile> file = OpenSales(spec);
        if (!file) return false;
        CString error;
        if (oxGenerateSample(*file, oxSampleCounts{50, 200, 800}, error) != oxioStatus::Success) {
            std::printf("  %s\n", error.c_str());
            return false;
        }
        std::printf(" generated 50 customers, 200 orders and 800 lines in %s\n", spec.FilePath().c_str());
    }

    oxdmQuery query("sales");
    oxdmQueryNode* customers = query.SetRoot(spec, 1, 0, "cust", 0x0f);
    oxdmQueryNode* orders = customers->AddChildNode(spec, 2, "CUSTNO=CUSTNO", 1, "orders", 0x0f);
    oxdmQueryNode* lines = orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "lines", 0x0f);
    oxTask task(1, "Sales");
    oxdmOXIOCursorNode tree(*customers, &task, nullptr);
    auto* orderNode = dynamic_cast<oxdmOXIOCursorNode*>(tree.Node(orders));
    auto* lineNode = dynamic_cast<oxdmOXIOCursorNode*>(tree.Node(lines));
    if (!orderNode || !lineNode) return false;
    Attach(tree, "NAME");
    Attach(tree, "CITY");
    Attach(*orderNode, "TOTAL");
    Attach(*lineNode, "ITEM");
    Attach(*lineNode, "QTY");

    std::printf(" the first rows of customers, their orders and lines, depth first:\n");
    bool more = tree.First(true);
    for (int row = 0; more && row < 10; ++row, more = tree.Next(true)) {
        std::printf("  %-8s %-18s | %-10s %10s | %-14s %4s\n", Text(tree, "CUSTNO").c_str(), Text(tree, "NAME").c_str(),
                    Text(*orderNode, "ORDNO").c_str(), Text(*orderNode, "TOTAL").c_str(),
                    Text(*lineNode, "ITEM").c_str(), Text(*lineNode, "QTY").c_str());
    }

    std::printf(" we rename the first customer while another program renames it too:\n");
    tree.First(false);
    const CString custno = Text(tree, "CUSTNO");
    OtherProgramRenames(spec, custno, "Renamed elsewhere");
    Set(tree, "NAME", "Renamed here");
    oxdmHeadlessPresenter& presenter = oxdmDefaultPresenter();
    presenter.Clear();
    CString error;
    const oxioStatus::Status status = tree.Update(error, 0, true, false);
    for (const oxdmShownBox& box : presenter.Boxes()) {
        CString text = box.text;
        text.Replace("\r", "\n    ");
        std::printf("  question \"%s\" (style 0x%x):\n    %s\n  answered %s\n", box.title.c_str(), box.style,
                    text.c_str(), box.answer == oxdmBox::IdYes ? "Yes" : "No");
    }
    tree.Revert(true);
    std::printf("  status %d; the stored name is now \"%s\"\n", static_cast<int>(status), Text(tree, "NAME").c_str());
    return true;
}
