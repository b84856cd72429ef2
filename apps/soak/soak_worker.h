#pragma once
// One soak process: makes its share of random edits through data managers
// on the shared record file, as a screen would, and journals each change it
// believes it committed.
//
// Its edits, drawn from a generator seeded by the run's seed and the
// process's number (so the plan is the same on every run):
//  - a customer, any of them, gets a new token in CITY, a NAME and a STATUS
//    made from it, after a pause that lets other processes get in between;
//  - one of its own orders gets a new line (saved on its own first), then
//    the order's TOTAL raised by it;
//  - one of its own orders loses a line, the TOTAL lowered by it;
//  - one of its own orders is renumbered, which deletes its lines and sets
//    its TOTAL to 0.

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "file_image.h"
#include "journal.h"
#include "oxdm/audit/audit.h"
#include "oxdm/common/shell/task.h"
#include "soak_options.h"

class oxdmBufferedFileDataSource;
class oxdmDataManager;
class oxdmQuery;
class SoakPresenter;

class SoakWorker {
public:
    // REQUIRES: journal.Ok(); `presenter` is installed; all three outlive the worker.
    SoakWorker(const SoakOptions& options, int index, const FileImage& initial, const std::string& path,
               JournalWriter& journal, SoakPresenter& presenter);
    ~SoakWorker();
    SoakWorker(const SoakWorker&) = delete;
    SoakWorker& operator=(const SoakWorker&) = delete;

    // Makes the options' number of edits.
    void Run();
    const WorkerFigures& Figures() const { return figures_; }

private:
    // An order of this process as its committed edits left it.
    struct OwnOrder {
        OrderImage order;
        std::map<long long, LineImage> lines;
    };

    void UpdateCustomer(long long seq);
    void AddLine(long long seq);
    void RemoveLine(long long seq);
    void RenumberOrder(long long seq);

    // Runs `save` until it answers true; a refusal after which `pending`
    // still holds (the record was in use) is retried after a pause.
    template <class Save, class Pending>
    bool SaveWithRetries(Save save, Pending pending);
    // Waits a little longer after each refusal.
    void Pause(int attempt);
    // Puts the orders' focus on `ordno`, whose lines fill the lines buffer.
    bool FocusOrder(const std::string& ordno);
    // Puts the lines' focus on line `lineNo` of the focused order.
    bool FocusLine(long long lineNo);
    // An owned order, drawn at random; with `withLines`, among those that
    // have lines (none when no order has any).
    std::map<std::string, OwnOrder>::iterator PickOrder(bool withLines);
    // Drops an order whose edit went wrong from further edits, and says so.
    // A refused save of an order is not tried again: the failed save left
    // the key column marked changed, and a second save would take the
    // key-change road, which deletes the order with its lines first.
    void Abandon(const std::string& ordno, const std::string& what);
    // A number of the plan: the same on every run of the same seed.
    long long Draw(long long low, long long high);
    // A number of the run's timing (pauses, whether an overwrite is
    // offered), drawn apart so that retries do not shift the plan.
    long long Jitter(long long low, long long high);

    // Starts the electronic audit log of `buffer`'s tree (nothing printed).
    static void Audit(oxdmAudit& audit, const oxdmQuery& query, oxdmBufferedFileDataSource& buffer);

    // options_, journal_ and presenter_ outlive the worker. The queries are
    // owned here and outlive their managers (declared first, destroyed
    // last); the buffers are owned by the managers. orders_ is the worker's
    // model of its own orders: every committed edit is applied to it right
    // after it is journaled.
    const SoakOptions& options_;
    int index_;
    JournalWriter& journal_;
    SoakPresenter& presenter_;
    std::mt19937_64 plan_, timing_;
    oxTask task_{1, "Soak"};
    std::vector<std::string> customers_;
    std::map<std::string, OwnOrder> orders_;
    long long renumbered_ = 0;
    WorkerFigures figures_;
    std::unique_ptr<oxdmQuery> customerQuery_, orderQuery_;
    std::unique_ptr<oxdmDataManager> customerManager_, orderManager_;
    oxdmBufferedFileDataSource* customerBuffer_ = nullptr;
    oxdmBufferedFileDataSource* orderBuffer_ = nullptr;
    oxdmBufferedFileDataSource* lineBuffer_ = nullptr;
    // The audit trails of both trees; declared after the managers, so they
    // go (and unregister their observers) before the buffers do.
    oxdmAudit customerAudit_, orderAudit_;
};

// The whole life of soak process `index`: its operator, presenter, journal
// and worker. Answers the process's exit code: 0 when every edit was made.
int RunSoakProcess(const SoakOptions& options, const std::string& dir, int index, const FileImage& initial,
                   const std::string& path);
