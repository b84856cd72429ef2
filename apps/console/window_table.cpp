#include "window_table.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "buffer_columns.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"

namespace {

constexpr size_t kMaxColumnWidth = 30;

// The cell cut or padded to `width`.
std::string Cell(const std::string& text, size_t width) {
    std::string cell = text.substr(0, width);
    cell.resize(width, ' ');
    return cell;
}

// The width of each column of `columns`: its default width, or its name's.
std::vector<size_t> ColumnWidths(oxdmBufferedFileDataSource& buffer, const std::vector<short>& columns) {
    std::vector<size_t> widths;
    for (short col : columns) {
        size_t width = ColumnName(buffer, col).size();
        if (const oxdmColumnDef* def = buffer.ColumnForIndex(col)->OXColumn())
            width = std::max<size_t>(width, def->DefaultWidth());
        widths.push_back(std::min(width, kMaxColumnWidth));
    }
    return widths;
}

std::string TitleLine(oxdmBufferedFileDataSource& buffer) {
    char percent[32];
    std::snprintf(percent, sizeof percent, "%.0f%%", buffer.WindowScrollPercent() * 100.0);
    std::string title = buffer.NodeLabel().str() + ": " + std::to_string(buffer.NumWindowDataRows()) + " rows shown, " +
                        percent + (buffer.CanScrollUp() ? ", more above" : "") +
                        (buffer.CanScrollDown() ? ", more below" : "");
    if (!buffer.HasFocusRow()) return title + ", no focus row";
    const short focus = buffer.FocusRow();
    if (buffer.IsNewRow()) {
        title += ", focus on the new row";
    } else {
        title += focus < 0 ? ", focus outside the window" : ", focus on row " + std::to_string(focus + 1);
    }
    if (buffer.IsKeyReserved()) title += " (key reserved)";
    if (buffer.IsRowChanged()) title += ", changed";
    return title;
}

// Ends a line, without the blanks that padded its last cell.
void EndLine(std::string& table) {
    while (!table.empty() && table.back() == ' ') table.pop_back();
    table += '\n';
}

}  // namespace

std::string WindowTable(oxdmBufferedFileDataSource& buffer) {
    const std::vector<short> columns = ShownColumns(buffer);
    const std::vector<size_t> widths = ColumnWidths(buffer, columns);
    std::string table = TitleLine(buffer) + "\n    ";
    for (size_t i = 0; i < columns.size(); ++i) table += Cell(ColumnName(buffer, columns[i]), widths[i]) + ' ';
    EndLine(table);
    const short focus = buffer.FocusRow();
    for (short row = 0; row < buffer.NumWindowDataRows(); ++row) {
        const bool onFocus = row == focus;
        table += onFocus ? '>' : ' ';
        table += onFocus && buffer.IsRowChanged() ? '*' : ' ';
        table += "  ";
        if (buffer.IsNewRow(row) && !onFocus) {
            table += "(new row)\n";
            continue;
        }
        for (size_t i = 0; i < columns.size(); ++i) {
            const short col = columns[i];
            const CString text = onFocus ? buffer.NewValueAsString(col) : buffer.CellValueAsString(row, col);
            table += Cell(text.str(), widths[i]) + ' ';
        }
        EndLine(table);
    }
    return table;
}
