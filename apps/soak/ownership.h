#pragma once
// Which soak process may edit an order. Customers are shared by every
// process (that is where data conflicts happen); each order and its lines
// belong to one process, so that a process's journal is the whole history
// of its orders. The sample's orders "O<number>" go round the processes in
// turn; an order renumbered by process p is "R<p, two digits><serial>".

#include <string>

// The owning process of `ordno` among `processes`, or -1 when the number is
// of neither form.
int OrderOwner(const std::string& ordno, int processes);

// The number that process `index` gives its `serial`-th renumbered order.
std::string RenumberedOrder(int index, long long serial);

// The token a soak process writes into a customer (its CITY) with the
// `seq`-th edit, and what the rest of the record holds with it.
std::string CustomerToken(int index, long long seq);
// The edit number of a token, or -1 when `city` is not a soak token.
long long TokenSequence(const std::string& city);
std::string NameForToken(const std::string& token);
// The STATUS choice (1-based) written with the token of edit `seq`.
int StatusForSequence(long long seq);
