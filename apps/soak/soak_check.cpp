#include "soak_check.h"

std::vector<std::string> CheckSoak(const FileImage& initial, const std::vector<Journal>& journals,
                                   const FileImage& final, const std::vector<AuditRow>& logged, int processes) {
    std::vector<std::string> problems;
    for (const Journal& journal : journals)
        if (!journal.complete)
            problems.push_back("The journal of process " + std::to_string(journal.process) +
                               " has no closing line: the process did not finish.");
    CheckCustomers(initial, journals, final, problems);
    const OrderModel model = ReplayOrders(initial, journals, processes, problems);
    CheckOrders(model, final, problems);
    CheckAuditLog(journals, model, logged, problems);
    return problems;
}
