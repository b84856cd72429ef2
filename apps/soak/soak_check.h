#pragma once
// The checker: proves from the record file and the journals that every
// change a process committed is there exactly once or was replaced by a
// later committed change, that nothing uncommitted is there, that every
// data conflict was reported (and only real ones), and that no record is
// half written. Each problem is one sentence naming the record.

#include <string>
#include <vector>

#include "file_image.h"
#include "journal.h"

// Customers are shared. Every commit names the token it replaced on file,
// so the commits of one customer must form a single chain from its first
// CITY to the CITY on file: two commits that replaced the same token mean a
// change was written over without a conflict being reported; a commit off
// the chain was lost; a file value off the chain was never committed.
void CheckCustomers(const FileImage& initial, const std::vector<Journal>& journals, const FileImage& final,
                    std::vector<std::string>& problems);

// Orders and lines belong to one process each: replaying every journal on
// the first image must give the file exactly, and on file every line must
// have its order and every order's TOTAL must be the sum of its lines.
void CheckOrders(const FileImage& initial, const std::vector<Journal>& journals, const FileImage& final,
                 int processes, std::vector<std::string>& problems);

// Both, after checking that every journal was closed.
std::vector<std::string> CheckSoak(const FileImage& initial, const std::vector<Journal>& journals,
                                   const FileImage& final, int processes);
