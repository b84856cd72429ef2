#include "soak_worker.h"

#include <unistd.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>

#include "oxdm/base/exception.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_column_base.h"
#include "oxdm/query/query_node.h"
#include "ownership.h"
#include "soak_presenter.h"

namespace {

constexpr int kAllRights = oxdmQueryNode::StyleCanRead | oxdmQueryNode::StyleCanUpdate |
                           oxdmQueryNode::StyleCanInsert | oxdmQueryNode::StyleCanDelete;
const char* const kStatusWords[] = {"Active", "On hold", "Closed"};

std::string Money(long long cents) {
    char text[32];
    std::snprintf(text, sizeof text, "%s%lld.%02lld", cents < 0 ? "-" : "", std::llabs(cents) / 100,
                  std::llabs(cents) % 100);
    return text;
}

std::string Get(oxdmBufferedFileDataSource& buffer, const char* column) {
    return buffer.NewValueAsString(buffer.IndexForColumn(column)).str();
}

// Sets a column of the focus row as a control would; a refusal is a fault
// of the soak or the library, not of the operator.
void Set(oxdmBufferedFileDataSource& buffer, const char* column, const std::string& text) {
    if (!buffer.ObserverSetNewValue(buffer.IndexForColumn(column), CString(text.c_str()), 0, true))
        throw oxdmException(CString(("The buffer " + buffer.NodeLabel().str() + " refused '" + text + "' for " +
                                     column + ".").c_str()));
}

bool FocusKey(oxdmBufferedFileDataSource& buffer, const char* column, const std::string& key) {
    const short col = buffer.IndexForColumn(column);
    buffer.SetFindValue(col, CString(key.c_str()));
    return buffer.FindGE() && !buffer.IsNewRow() && Get(buffer, column) == key;
}

}  // namespace

SoakWorker::SoakWorker(const SoakOptions& options, int index, const FileImage& initial, const std::string& path,
                       JournalWriter& journal, SoakPresenter& presenter)
    : options_(options),
      index_(index),
      journal_(journal),
      presenter_(presenter),
      plan_(options.seed * 1000003ULL + static_cast<unsigned long long>(index)),
      timing_(~plan_()) {
    assert(journal.Ok());
    for (const auto& [custno, customer] : initial.customers) customers_.push_back(custno);
    for (const auto& [ordno, order] : initial.orders)
        if (OrderOwner(ordno, options.processes) == index) orders_[ordno].order = order;
    for (const auto& [key, line] : initial.lines)
        if (auto own = orders_.find(key.first); own != orders_.end()) own->second.lines[key.second] = line;

    const oxioFileSpec spec(path.c_str());
    customerQuery_ = std::make_unique<oxdmQuery>("customers");
    customerQuery_->SetRoot(spec, 1, 0, "cust", kAllRights)->AddAllColumns(true, true, false);
    customerManager_ = std::make_unique<oxdmDataManager>(customerQuery_.get(), &task_, nullptr);
    customerBuffer_ = customerManager_->RootBuffer();

    // Orders with their lines; deleting an order (as a renumbering does)
    // takes its lines with it.
    orderQuery_ = std::make_unique<oxdmQuery>("orders");
    oxdmQueryNode* orders = orderQuery_->SetRoot(spec, 2, 0, "orders", kAllRights);
    orders->AddColumn("ORDNO", oxdmQueryColumnBase::StyleChangeableKey);
    orders->AddColumns("CUSTNO,TOTAL");
    orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "lines", kAllRights | oxdmQueryNode::StyleCascadedDelete)
        ->AddAllColumns(true, true, false);
    orderManager_ = std::make_unique<oxdmDataManager>(orderQuery_.get(), &task_, nullptr);
    orderBuffer_ = orderManager_->RootBuffer();
    lineBuffer_ = orderBuffer_ ? orderBuffer_->BufferForNode(CString("lines")) : nullptr;
    if (!customerBuffer_ || !orderBuffer_ || !lineBuffer_) throw oxdmException(CString("The soak's buffers could not be made."));
    for (oxdmBufferedFileDataSource* buffer : {customerBuffer_, orderBuffer_, lineBuffer_}) {
        buffer->SetWindowSize(5);
    }
    customerBuffer_->ReQuery();
    orderBuffer_->ReQuery();
    Audit(customerAudit_, *customerQuery_, *customerBuffer_);
    Audit(orderAudit_, *orderQuery_, *orderBuffer_);
}

void SoakWorker::Audit(oxdmAudit& audit, const oxdmQuery& query, oxdmBufferedFileDataSource& buffer) {
    audit = oxdmAudit(buffer.Task());
    audit.Prompt(&query);  // false: auditing is on and printing off
    audit.Observe(&buffer);
    audit.Start();
}

SoakWorker::~SoakWorker() = default;

long long SoakWorker::Draw(long long low, long long high) {
    return std::uniform_int_distribution<long long>(low, high)(plan_);
}

long long SoakWorker::Jitter(long long low, long long high) {
    return std::uniform_int_distribution<long long>(low, high)(timing_);
}

void SoakWorker::Run() {
    for (long long seq = 1; seq <= options_.edits; ++seq) {
        ++figures_.edits;
        const long long roll = Draw(0, 99);
        if (roll < 50 || orders_.empty()) {
            UpdateCustomer(seq);
        } else if (roll < 75) {
            AddLine(seq);
        } else if (roll < 88) {
            RemoveLine(seq);
        } else {
            RenumberOrder(seq);
        }
    }
}

void SoakWorker::Pause(int attempt) {
    ::usleep(static_cast<useconds_t>(100 + Jitter(0, 400 * std::min(attempt + 1, 10))));
}

template <class Save, class Pending>
bool SoakWorker::SaveWithRetries(Save save, Pending pending) {
    for (int attempt = 0;; ++attempt) {
        if (save()) return true;
        if (!pending() || attempt >= options_.maxRetries) return false;
        ++figures_.retries;
        Pause(attempt);
    }
}

void SoakWorker::UpdateCustomer(long long seq) {
    const std::string& custno = customers_[static_cast<size_t>(Draw(0, static_cast<long long>(customers_.size()) - 1))];
    const std::string token = CustomerToken(index_, seq);
    for (int attempt = 0;; ++attempt) {
        if (!FocusKey(*customerBuffer_, "CUSTNO", custno))
            throw oxdmException(CString(("Customer " + custno + " could not be found.").c_str()));
        const std::string base = customerBuffer_->SavedValueAsString(customerBuffer_->IndexForColumn("CITY")).str();
        if (options_.thinkMicros > 0) ::usleep(static_cast<useconds_t>(Jitter(0, options_.thinkMicros)));
        Set(*customerBuffer_, "NAME", NameForToken(token));
        Set(*customerBuffer_, "CITY", token);
        Set(*customerBuffer_, "STATUS", kStatusWords[StatusForSequence(seq) - 1]);
        customerBuffer_->SetAllowDataConflictOverwrite(Jitter(0, 3) != 0);
        presenter_.BeginSave(custno, base);
        const bool saved = customerManager_->CommitData();
        const std::vector<ConflictSeen>& conflicts = presenter_.Conflicts();
        for (const ConflictSeen& conflict : conflicts) journal_.Write(conflict);
        figures_.conflicts += static_cast<long long>(conflicts.size());
        for (const std::string& text : presenter_.OtherBoxes())
            if (text.find("in use") == std::string::npos)
                std::fprintf(stderr, "soak %d: customer %s: unexpected box: %s\n", index_, custno.c_str(), text.c_str());
        if (saved) {
            // Without a question nothing came between the read and the
            // write; after an overwrite, the write replaced what was on file
            // while the question was asked.
            const bool overwrote = !conflicts.empty() && conflicts.back().answer == ConflictAnswer::Overwrite;
            journal_.Write(CustomerCommit{custno, base, overwrote ? conflicts.back().seen : base, token});
            ++figures_.committed;
            return;
        }
        if (!customerBuffer_->IsRowChanged()) return;  // refused after a conflict: the row shows theirs
        // The record was in use. The buffer keeps the edits, but the failed
        // save left the key column marked changed, and saving them again
        // would delete and insert the record, a road without the conflict
        // check. So the edit starts afresh from a new read, as an operator
        // who reverts and retypes would.
        journal_.Write(CustomerInUse{custno, base});
        customerManager_->RevertRow(nullptr);
        if (attempt >= options_.maxRetries) {
            ++figures_.givenUp;
            return;
        }
        ++figures_.retries;
        Pause(attempt);
    }
}

bool SoakWorker::FocusOrder(const std::string& ordno) { return FocusKey(*orderBuffer_, "ORDNO", ordno); }

bool SoakWorker::FocusLine(long long lineNo) {
    bool more = lineBuffer_->MoveToTop(0, true, true);
    while (more && !lineBuffer_->IsNewRow()) {
        long long cents = 0;
        if (ParseCents(Get(*lineBuffer_, "LINENO"), cents) && cents == lineNo * 100) return true;
        more = lineBuffer_->MoveDown(1, 0, true, true) > 0;
    }
    return false;
}

std::map<std::string, SoakWorker::OwnOrder>::iterator SoakWorker::PickOrder(bool withLines) {
    std::vector<std::map<std::string, OwnOrder>::iterator> candidates;
    for (auto it = orders_.begin(); it != orders_.end(); ++it)
        if (!withLines || !it->second.lines.empty()) candidates.push_back(it);
    if (candidates.empty()) return orders_.end();
    return candidates[static_cast<size_t>(Draw(0, static_cast<long long>(candidates.size()) - 1))];
}

void SoakWorker::Abandon(const std::string& ordno, const std::string& what) {
    std::fprintf(stderr, "soak %d: order %s: %s\n", index_, ordno.c_str(), what.c_str());
    for (const std::string& text : presenter_.OtherBoxes())
        std::fprintf(stderr, "soak %d:   box: %s\n", index_, text.c_str());
    ++figures_.givenUp;
    orderManager_->RevertRow(lineBuffer_->QueryRow());
    orderManager_->RevertRow(nullptr);
    orders_.erase(ordno);
}

void SoakWorker::AddLine(long long seq) {
    auto own = PickOrder(false);
    const std::string ordno = own->first;
    if (!FocusOrder(ordno)) return Abandon(ordno, "not found");
    const long long lineNo = own->second.lines.empty() ? 1 : own->second.lines.rbegin()->first + 1;
    char item[16];
    std::snprintf(item, sizeof item, "SOAK-%06lld", (seq * 10 + index_) % 1000000);
    const LineImage line{item, Draw(1, 24), Draw(50, 99999)};
    const long long total = own->second.order.totalCents + line.AmountCents();

    lineBuffer_->MoveToBottom(0, true, false);
    if (!lineBuffer_->IsNewRow()) return Abandon(ordno, "the lines have no new row");
    Set(*lineBuffer_, "LINENO", std::to_string(lineNo));
    Set(*lineBuffer_, "ITEM", line.item);
    Set(*lineBuffer_, "QTY", std::to_string(line.qty));
    Set(*lineBuffer_, "PRICE", Money(line.priceCents));
    presenter_.BeginSave("", "");
    // The line goes first, on its own: a save of the order would also log
    // the pending fields of its lines' buffer, as changes of whatever line
    // the lines' cursor read last.
    if (!SaveWithRetries([&] { return lineBuffer_->ValidateRow(0, false); },
                         [&] { return lineBuffer_->IsRowChanged(); }))
        return Abandon(ordno, "adding line " + std::to_string(lineNo) + " failed");
    Set(*orderBuffer_, "TOTAL", Money(total));
    if (!orderManager_->CommitData()) return Abandon(ordno, "raising the total failed");
    journal_.Write(LineAdded{ordno, lineNo, line, total});
    ++figures_.committed;
    own->second.lines[lineNo] = line;
    own->second.order.totalCents = total;
}

void SoakWorker::RemoveLine(long long seq) {
    auto own = PickOrder(true);
    if (own == orders_.end()) return AddLine(seq);
    const std::string ordno = own->first;
    auto line = std::next(own->second.lines.begin(),
                          static_cast<long>(Draw(0, static_cast<long long>(own->second.lines.size()) - 1)));
    const long long lineNo = line->first;
    if (!FocusOrder(ordno) || !FocusLine(lineNo)) return Abandon(ordno, "line " + std::to_string(lineNo) + " not found");
    presenter_.BeginSave("", "");
    if (!SaveWithRetries([&] { return lineBuffer_->DeleteRow(0, false); }, [&] { return FocusLine(lineNo); }))
        return Abandon(ordno, "deleting line " + std::to_string(lineNo) + " failed");
    const long long total = own->second.order.totalCents - line->second.AmountCents();
    Set(*orderBuffer_, "TOTAL", Money(total));
    if (!orderManager_->CommitData()) return Abandon(ordno, "lowering the total failed");
    journal_.Write(LineRemoved{ordno, lineNo, total});
    ++figures_.committed;
    own->second.lines.erase(line);
    own->second.order.totalCents = total;
}

void SoakWorker::RenumberOrder(long long) {
    auto own = PickOrder(false);
    const std::string ordno = own->first;
    if (!FocusOrder(ordno)) return Abandon(ordno, "not found");
    const std::string renumbered = RenumberedOrder(index_, ++renumbered_);
    Set(*orderBuffer_, "ORDNO", renumbered);
    Set(*orderBuffer_, "TOTAL", Money(0));
    presenter_.BeginSave("", "");
    if (!orderManager_->CommitData()) return Abandon(ordno, "renumbering to " + renumbered + " failed");
    journal_.Write(OrderRekeyed{ordno, renumbered});
    ++figures_.committed;
    OwnOrder moved{own->second.order, {}};
    moved.order.totalCents = 0;
    orders_.erase(own);
    orders_[renumbered] = moved;
}

int RunSoakProcess(const SoakOptions& options, const std::string& dir, int index, const FileImage& initial,
                   const std::string& path) {
    ::setenv("OXDM_OPERATOR", ("soak" + std::to_string(index)).c_str(), 1);
    oxdmGlobalData::Instance()->OverrideAuditing(true);  // the electronic log, without the printed report
    oxApp app("OX");
    OXSetApp(&app);
    SoakPresenter presenter(oxioFileSpec(path.c_str()), options.seed * 7919ULL + static_cast<unsigned long long>(index));
    oxdmSetPresenter(&presenter);
    JournalWriter journal(JournalPath(dir, index));
    int code = 0;
    if (!journal.Ok()) {
        std::fprintf(stderr, "soak %d: cannot write the journal %s\n", index, JournalPath(dir, index).c_str());
        code = 2;
    } else {
        try {
            SoakWorker worker(options, index, initial, path, journal, presenter);
            worker.Run();
            journal.Write(worker.Figures());
        } catch (const oxdmException& e) {
            std::fprintf(stderr, "soak %d: %s\n", index, e.Message().c_str());
            code = 1;
        } catch (const CString& text) {
            std::fprintf(stderr, "soak %d: %s\n", index, text.c_str());
            code = 1;
        }
    }
    oxdmSetPresenter(nullptr);
    OXSetApp(nullptr);
    return code;
}
