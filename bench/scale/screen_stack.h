#pragma once
// One way of putting the customers of the scale file on a screen, listed by
// name, 30 rows at a time. Each operation ends with the rows it shows copied
// out as text, as a screen would draw them. The stacks are compared on the
// same operations in the same order:
//
//   Open      open the file and show the first rows
//   Last      show the last rows
//   Middle    show the rows from the middle of the list
//   Find      show the rows from the first customer at or after a name
//   Save      change the city of the first row shown, save it, show the
//             rows again

#include <memory>
#include <string>
#include <vector>

inline constexpr int kScreenRows = 30;

// The rows a screen shows, each its cells joined by tabs.
using ScreenRows = std::vector<std::string>;

class ScreenStack {
public:
    virtual ~ScreenStack() = default;

    virtual void Open(const std::string& path) = 0;
    // REQUIRES (these four): Open has been called.
    virtual void Last() = 0;
    virtual void Middle() = 0;
    virtual void Find(const std::string& name) = 0;
    virtual void Save(const std::string& city) = 0;

    // What the last operation shows.
    const ScreenRows& Shown() const { return shown_; }

protected:
    ScreenRows shown_;
};

// The raw SQLite keyset queries: the physical floor.
std::unique_ptr<ScreenStack> MakeFloorStack();
// The library's buffered data source, window of 30.
std::unique_ptr<ScreenStack> MakeBufferedStack();
// Qt's QSqlTableModel and QSqlQueryModel, headless; built only with Qt.
std::unique_ptr<ScreenStack> MakeQtTableStack();
std::unique_ptr<ScreenStack> MakeQtQueryStack();
