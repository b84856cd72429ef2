#pragma once
// The checker: proves from the record file, its audit log and the journals
// that every change a process committed is there exactly once or was
// replaced by a later committed change, that nothing uncommitted is there,
// that every data conflict was reported (and only real ones), that no
// record is half written, and that the audit log holds exactly the
// committed changes. Each problem is one sentence naming the record.

#include <string>
#include <vector>

#include "audit_row.h"
#include "file_image.h"
#include "journal.h"
#include "order_model.h"

struct oxAuditLogEntry;

// Customers are shared. Every commit names the token it replaced on file,
// so the commits of one customer must form a single chain from its first
// CITY to the CITY on file: two commits that replaced the same token mean a
// change was written over without a conflict being reported; a commit off
// the chain was lost; a file value off the chain was never committed.
void CheckCustomers(const FileImage& initial, const std::vector<Journal>& journals, const FileImage& final,
                    std::vector<std::string>& problems);

// Orders and lines belong to one process each: the journals replayed on the
// first image, with a sentence in `problems` for each entry that cannot be.
OrderModel ReplayOrders(const FileImage& initial, const std::vector<Journal>& journals, int processes,
                        std::vector<std::string>& problems);
// The replay must give the file exactly; and on file every line must have
// its order and every order's TOTAL must be the sum of its lines.
void CheckOrders(const OrderModel& model, const FileImage& final, std::vector<std::string>& problems);

// The log's entries in the form the check compares: numbers in cents; a
// customer's NAME without its old value and its STATUS left out (a status
// that does not change is not logged, and one edited in a save that failed
// stays pending into the process's next save, as it is meant to).
std::vector<AuditRow> ComparableAuditRows(const std::vector<oxAuditLogEntry>& entries);
// The log must hold one row for each column of each committed change, and
// nothing else: a customer's CITY from the token read to the token written
// (read by the first failed save since the process's last commit, if any:
// its pending columns merge into the next save), its NAME; an added line's
// fields; an order's TOTAL and a new ORDNO.
void CheckAuditLog(const std::vector<Journal>& journals, const OrderModel& model, const std::vector<AuditRow>& logged,
                   std::vector<std::string>& problems);

// All of the above, after checking that every journal was closed.
std::vector<std::string> CheckSoak(const FileImage& initial, const std::vector<Journal>& journals,
                                   const FileImage& final, const std::vector<AuditRow>& logged, int processes);
