#include "soak_check.h"

std::vector<std::string> CheckSoak(const FileImage& initial, const std::vector<Journal>& journals,
                                   const FileImage& final, int processes) {
    std::vector<std::string> problems;
    for (const Journal& journal : journals)
        if (!journal.complete)
            problems.push_back("The journal of process " + std::to_string(journal.process) +
                               " has no closing line: the process did not finish.");
    CheckCustomers(initial, journals, final, problems);
    CheckOrders(initial, journals, final, processes, problems);
    return problems;
}
