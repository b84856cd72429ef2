// Qt's stacks, headless: QSqlTableModel and QSqlQueryModel over the QSQLITE
// driver, in name order. Both fetch rows in blocks as asked (Qt's SQLite
// driver cannot tell a query's size), so showing the last rows, the middle
// or a row found by name first fetches every row; a find is a binary search
// over the fetched names. After a save each model selects again, and showing
// the saved row fetches down to it again.

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QSqlTableModel>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "screen_stack.h"

namespace {

constexpr const char* kColumns[] = {"CUSTNO", "NAME", "CITY", "BALANCE", "SINCE"};
constexpr const char* kSelect = "SELECT _oxdm_rid, CUSTNO, NAME, CITY, BALANCE, SINCE FROM t1 ORDER BY NAME, _oxdm_rid";

[[noreturn]] void Fail(const char* what, const QSqlError& error) {
    std::fprintf(stderr, "%s: %s\n", what, error.text().toUtf8().constData());
    std::exit(1);
}

// What the two models share: the connection, fetching, showing and finding.
class QtStack : public ScreenStack {
public:
    void Last() override {
        FetchAll();
        ShowFrom(Model().rowCount() - kScreenRows);
    }
    void Middle() override {
        FetchAll();
        ShowFrom(Model().rowCount() / 2);
    }
    void Find(const std::string& name) override {
        FetchAll();
        const QString wanted = QString::fromStdString(name);
        int low = 0, high = Model().rowCount();
        while (low < high) {
            const int mid = low + (high - low) / 2;
            if (Model().index(mid, columns_[1]).data().toString() < wanted) low = mid + 1; else high = mid;
        }
        ShowFrom(low);
    }

protected:
    void Connect(const std::string& path) {
        db_ = QSqlDatabase::addDatabase("QSQLITE", "scale");
        db_.setDatabaseName(QString::fromStdString(path));
        if (!db_.open()) Fail("open", db_.lastError());
        // The store's durability: a commit writes the log without waiting for the disk.
        QSqlQuery(db_).exec("PRAGMA synchronous=NORMAL");
    }
    virtual QSqlQueryModel& Model() = 0;
    void FindColumns() {
        columns_.clear();
        for (const char* name : kColumns) columns_.push_back(Model().record().indexOf(name));
    }
    void FetchAll() {
        while (Model().canFetchMore()) Model().fetchMore();
    }
    // Shows the rows from `top`, fetching down to them first.
    void ShowFrom(int top) {
        QSqlQueryModel& model = Model();
        while (model.rowCount() < top + kScreenRows && model.canFetchMore()) model.fetchMore();
        top_ = std::max(0, top);
        shown_.clear();
        for (int row = top_; row < std::min(model.rowCount(), top_ + kScreenRows); ++row) {
            std::string text;
            for (size_t i = 0; i < columns_.size(); ++i)
                text += (i ? "\t" : "") + model.index(row, columns_[i]).data().toString().toStdString();
            shown_.push_back(std::move(text));
        }
    }

    // The application object comes first: the driver needs it.
    int argc_ = 1;
    char name_[12] = "scale_bench";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication app_{argc_, argv_};
    QSqlDatabase db_;
    std::vector<int> columns_;  // the model's columns of kColumns
    int top_ = 0;               // the model row at the top of the screen
};

class TableStack : public QtStack {
public:
    void Open(const std::string& path) override {
        Connect(path);
        model_ = std::make_unique<QSqlTableModel>(nullptr, db_);
        model_->setTable("t1");
        model_->setEditStrategy(QSqlTableModel::OnManualSubmit);
        FindColumns();
        model_->setSort(columns_[1], Qt::AscendingOrder);
        if (!model_->select()) Fail("select", model_->lastError());
        ShowFrom(0);
    }
    void Save(const std::string& city) override {
        model_->setData(model_->index(top_, columns_[2]), QString::fromStdString(city));
        if (!model_->submitAll()) Fail("submitAll", model_->lastError());
        ShowFrom(top_);
    }

private:
    QSqlQueryModel& Model() override {
        assert(model_);
        return *model_;
    }
    std::unique_ptr<QSqlTableModel> model_;
};

class QueryStack : public QtStack {
public:
    void Open(const std::string& path) override {
        Connect(path);
        model_ = std::make_unique<QSqlQueryModel>();
        Select();
        FindColumns();
        ShowFrom(0);
    }
    // A query model cannot write: the save is an UPDATE of the record by its
    // id, and the model's query runs again to show it.
    void Save(const std::string& city) override {
        QSqlQuery update(db_);
        update.prepare("UPDATE t1 SET CITY = ?, _oxdm_ver = _oxdm_ver + 1 WHERE _oxdm_rid = ?");
        update.addBindValue(QString::fromStdString(city));
        update.addBindValue(model_->index(top_, 0).data());
        if (!update.exec()) Fail("update", update.lastError());
        Select();
        ShowFrom(top_);
    }

private:
    QSqlQueryModel& Model() override {
        assert(model_);
        return *model_;
    }
    void Select() {
        model_->setQuery(kSelect, db_);
        if (model_->lastError().isValid()) Fail("query", model_->lastError());
    }
    std::unique_ptr<QSqlQueryModel> model_;
};

}  // namespace

std::unique_ptr<ScreenStack> MakeQtTableStack() { return std::make_unique<TableStack>(); }
std::unique_ptr<ScreenStack> MakeQtQueryStack() { return std::make_unique<QueryStack>(); }
