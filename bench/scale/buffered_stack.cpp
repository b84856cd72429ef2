// The library's stack: a buffered data source over the customers in name
// order (key 1 of "cus"), window of 30. A save edits the city of the focus
// row, which the find put at the top, and validates the row.

#include <cassert>
#include <cstdio>
#include <vector>

#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "screen_stack.h"

namespace {

constexpr const char* kColumns[] = {"CUSTNO", "NAME", "CITY", "BALANCE", "SINCE"};
constexpr int kNameKey = 1;
constexpr int kAllRights = 0x0f;

class BufferedStack : public ScreenStack {
public:
    void Open(const std::string& path) override {
        oxdmQueryNode* node = query_.SetRoot(oxioFileSpec(path.c_str()), 1, kNameKey, "cust", kAllRights);
        node->AddColumns("CUSTNO,NAME,CITY,BALANCE,SINCE");
        buffer_ = std::make_unique<oxdmBufferedFileDataSource>(&query_, &task_, static_cast<oxdmFileManager*>(nullptr));
        buffer_->SetWindowSize(kScreenRows);
        for (const char* name : kColumns) columns_.push_back(buffer_->IndexForColumn(name));
        buffer_->ReQuery();
        Show();
    }
    void Last() override {
        buffer_->SetWindowScroll(oxdmDataSource::ScrollBottom, 0);
        Show();
    }
    void Middle() override {
        buffer_->SetWindowScrollPercent(0.5);
        Show();
    }
    void Find(const std::string& name) override {
        buffer_->SetFindValue(columns_[1], CString(name.c_str()));
        if (!buffer_->FindGE()) std::fprintf(stderr, "buffered: nothing at or after %s\n", name.c_str());
        Show();
    }
    void Save(const std::string& city) override {
        buffer_->ObserverSetNewValue(columns_[2], CString(city.c_str()), 0, true);
        if (!buffer_->ValidateRow(0, true)) std::fprintf(stderr, "buffered: the save was refused\n");
        Show();
    }

private:
    void Show() {
        assert(buffer_);
        shown_.clear();
        for (short row = 0; row < buffer_->NumWindowDataRows(); ++row) {
            std::string text;
            for (size_t i = 0; i < columns_.size(); ++i)
                text += (i ? "\t" : "") + buffer_->CellValueAsString(row, columns_[i]).str();
            shown_.push_back(std::move(text));
        }
    }

    // The query outlives the buffer (declared first); columns_ are the
    // buffer's indexes of kColumns.
    oxTask task_{1, "Scale"};
    oxdmQuery query_{"scale"};
    std::unique_ptr<oxdmBufferedFileDataSource> buffer_;
    std::vector<short> columns_;
};

}  // namespace

std::unique_ptr<ScreenStack> MakeBufferedStack() { return std::make_unique<BufferedStack>(); }
