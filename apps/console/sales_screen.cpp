#include "sales_screen.h"

#include "oxdm/common/store/file_spec.h"
#include "oxdm/datasource/focus_row_mgr.h"
#include "oxdm/query/query_node.h"

namespace {

constexpr int kRights = oxdmQueryNode::StyleCanRead | oxdmQueryNode::StyleCanUpdate | oxdmQueryNode::StyleCanInsert |
                        oxdmQueryNode::StyleCanDelete;

// The root and its descendants, depth first.
void ListTree(oxdmBufferedFileDataSource* buffer, std::vector<oxdmBufferedFileDataSource*>& out) {
    out.push_back(buffer);
    for (oxdmBufferedFileDataSource* child : buffer->Children()) ListTree(child, out);
}

}  // namespace

SalesScreen::SalesScreen(const std::string& path, short windowRows, const std::string& reportPath)
    : path_(path), query_(std::make_unique<oxdmQuery>("sales")) {
    const oxioFileSpec spec(path.c_str());
    oxdmQueryNode* customers = query_->SetRoot(spec, 1, 0, "cust", kRights);
    customers->AddColumns("CUSTNO,NAME,CITY,STATUS,BALANCE");
    // A customer's orders in order number order (key 1: CUSTNO, ORDNO);
    // deleting a customer deletes its orders, and an order its lines.
    oxdmQueryNode* orders =
        customers->AddChildNode(spec, 2, "CUSTNO=CUSTNO", 1, "orders", kRights | oxdmQueryNode::StyleCascadedDelete);
    orders->AddColumns("ORDNO,CUSTNO,ODATE,TOTAL");
    oxdmQueryNode* lines =
        orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "lines", kRights | oxdmQueryNode::StyleCascadedDelete);
    lines->AddColumns("ORDNO,LINENO,ITEM,QTY,PRICE");

    manager_ = std::make_unique<oxdmDataManager>(query_.get(), &task_, nullptr);
    ListTree(manager_->RootBuffer(), buffers_);
    for (oxdmBufferedFileDataSource* buffer : buffers_) {
        // Another program's change met on a save is put to the operator as
        // a question rather than refused outright.
        buffer->SetAllowDataConflictOverwrite(true);
        buffer->SetWindowSize(windowRows);
        watches_.push_back(std::make_unique<BufferWatch>(*buffer));
    }
    audit_ = std::make_unique<ConsoleAudit>(task_, *query_, *manager_->RootBuffer(), reportPath);
    manager_->RootBuffer()->ReQuery();
}

oxdmDSFocusRowMgr* SalesScreen::CurrentRowMgr() const { return current_ == 0 ? nullptr : Current().QueryRow(); }

bool SalesScreen::Switch(const std::string& name) {
    for (size_t i = 0; i < buffers_.size(); ++i) {
        if (buffers_[i]->NodeLabel().str() == name) {
            current_ = i;
            return true;
        }
    }
    return false;
}

bool SalesScreen::SavePending() {
    if (current_ == 0) return manager_->CommitData();
    return Current().QueryRow()->UpdateRow();
}

void SalesScreen::ScrollToFocus() {
    oxdmBufferedFileDataSource& buffer = Current();
    if (buffer.HasFocusRow() && buffer.FocusRow() < 0) buffer.SetWindowScroll(oxdmDataSource::ScrollToFocus, -1);
}

std::string SalesScreen::FirstChangedBuffer() const {
    for (const oxdmBufferedFileDataSource* buffer : buffers_)
        if (buffer->IsRowChanged()) return buffer->NodeLabel().str();
    return {};
}

std::string SalesScreen::BufferNames() const {
    std::string names;
    for (const oxdmBufferedFileDataSource* buffer : buffers_) {
        if (!names.empty()) names += ", ";
        names += buffer->NodeLabel().str();
    }
    return names;
}
