#pragma once
// The print service (xp_*) and the print hub (xh_*, xw_*).
//
// A print job is a report in the making: pages of monospaced text lines,
// each page headed by the report's two titles and by the heading lines the
// caller set. The caller builds the current line field by field
// (xp_put_field), writes it (xp_wr_line), and may turn it into a heading
// line instead (xp_set_line). When the job ends, its pages are written to
// `<output>.pdf` (Cairo and Pango, monospace) and `<output>.txt` (plain
// text, pages separated by a form feed "\f").
//
// The hub runs one job on the operator's behalf: xh_process_hub asks the
// operator to confirm through the presenter, then calls the job's process
// callback (confirmed) or its terminate callback (cancelled), both BEFORE it
// returns. A caller that waits for one of the callbacks must therefore set
// its waiting state before calling xh_process_hub, not after.
//
// Handles are small positive shorts; several jobs may be open at once. A
// handle that names no open job is answered with XP_BAD_HANDLE (or 0 where
// a handle is answered), never a crash.
//
// All calls belong to the user-interface thread.

#include <cstddef>

#include "oxdm/common/values/xval.h"

// Answers of the xp_* calls (and of xw_send_message, as a long).
inline constexpr short XP_OK = 0;
inline constexpr short XP_CLIPPED = 1;        // xp_put_field: the field ran past the line's end and was cut there
inline constexpr short XP_BAD_HANDLE = -1;    // no open job has this handle
inline constexpr short XP_BAD_ARGUMENT = -2;  // a null pointer, a column or count out of range, an unknown kind
inline constexpr short XP_WRITE_FAILED = -3;  // the report could not be written (the operator was told why)

// Messages of xw_send_message.
inline constexpr short XH_MSG_CLOSE = 104;       // closes the job (writing it first if not written yet)
inline constexpr short XH_MSG_END_REPORT = 204;  // ends the report: writes <output>.pdf and <output>.txt

// Page orientation of xp_print_def::orientation.
inline constexpr short XP_PORTRAIT = 1;
inline constexpr short XP_LANDSCAPE = 2;

// Paper of xp_print_def::paper.
inline constexpr short XP_PAPER_LETTER = 0;
inline constexpr short XP_PAPER_A4 = 1;

// One field of the current line. Zero it before each use.
struct xp_field_def {
    short column;      // 0: 0-based character column; -1: the next free column (one blank after the
                       //    last text on the line, or column 0 on an empty line)
    short width;       // 2: characters the field may take; 0: the text's own length. The text is cut
                       //    at the width: a caller that wants room for a marker cuts it shorter itself
    short formatted;   // 4: non-zero: the value's text goes through the edit formatter of a field of
                       //    this code, section and decimals (the value's kind picks the field type)
    short code;        // 6: the field code number, as xio_fld_def::code; 0 for none
    short section;     // 8: the code's section number, as xio_fld_def::section
    short decimals;    // 10: decimal places of a numeric value
    char reserved[36]; // 12: zero
};
static_assert(sizeof(xp_field_def) == 48);

// A report definition. Zero it, then fill the titles, orientation and width.
struct xp_print_def {
    char title1[31];    // 0: first title line, centred on each page
    char title2[31];    // 31: second title line, centred, with the page number at the right
    short orientation;  // 62: XP_PORTRAIT or XP_LANDSCAPE (0: portrait)
    short width;        // 64: characters per line (0: 80)
    short page_lines;   // 66: lines per page, titles and headings included (0: as many as the
                        //     paper holds at 10 points); read back by xp_get_def
    short line;         // 68: read back: lines used on the current page, titles and headings
                        //     included; 0 before the page's first line is written
    short page;         // 70: read back: the current page, from 1
    short paper;        // 72: XP_PAPER_LETTER or XP_PAPER_A4
    char reserved[310]; // 74: zero
};
static_assert(sizeof(xp_print_def) == 384);

#pragma pack(push, 1)
// A hub job. Packed: read and write its members by value, and copy `report`
// with memcpy rather than binding a reference or pointer to it.
struct xh_process_def {
    short process_id;                    // 0: from xh_process_id(); 0 is refused
    char name[41];                       // 2: the job's name, the title of its confirmation box
    char short_name[21];                 // 43: names the default output file
    short (*process)(xh_process_def*);   // 64: called when the operator confirms; answers 0, or
                                         //     non-zero to give the job up (nothing is written)
    void (*terminate)(void*);            // 72: called with user_data when the operator cancels
    void* user_data;                     // 80: handed back to the callbacks
    short modal;                         // 88: 1: a modal job
    short handle;                        // 90: set by the hub before `process`: the handle for xp_*
    xp_print_def report;                 // 92: the definition the job prints with
    char output[256];                    // 476: the output path without extension; empty: the
                                         //      default, $OXDM_PRINT_DIR/<short_name>-<yyyymmdd-hhmmss>
    char reserved[435];                  // 732: zero
};
#pragma pack(pop)
static_assert(sizeof(xh_process_def) == 1167);

// A fresh process id for a hub definition; never 0.
short xh_process_id();

// Asks the operator to confirm the job (an OK/Cancel box titled with def->name). On OK: opens a
// print job with def->report and def->output, sets def->handle, calls def->process(def), and
// answers the hub handle (> 0) by which xw_send_message ends the job. On Cancel: calls
// def->terminate(def->user_data) and answers 0. A definition without a process id, a callback
// or a name answers 0 and calls nothing.
short xh_process_hub(xh_process_def* def);

// Hides the hub's window; the job keeps running. Nothing happens for an unknown hub.
void xw_hide_window(short hub);

// XH_MSG_END_REPORT writes the job's files; XH_MSG_CLOSE closes it. Answers XP_OK, XP_BAD_HANDLE,
// XP_BAD_ARGUMENT for another message, or XP_WRITE_FAILED. The other arguments are unused.
long xw_send_message(short hub, short message, short, short, long, long, long);

// Opens a print job without the hub, for an application that runs its own; answers its handle,
// or 0 when def is null. output is as xh_process_def::output (null or empty: the default, named
// after def->title2). The job ends with xp_close.
short xp_open(const xp_print_def* def, const char* output);
// Writes the job's files (unless written already) and closes it.
short xp_close(short handle);

// Puts value's text on the current line as field says; XP_CLIPPED when cut at the line's end.
// A field starting at or past the line's end is XP_BAD_ARGUMENT and changes nothing.
short xp_put_field(short handle, xp_field_def* field, x_value_def* value);
// kind 0: the current line becomes heading line `line` (from 1) of every page begun from now on
// (the current page too, if nothing was written on it yet), and the current line is cleared.
short xp_set_line(short handle, short kind, short line);
// Writes the current line, then count - 1 blank lines; skip blank lines go before it, and
// new_page 1 starts a new page first. The current line is cleared. count must be at least 1.
short xp_wr_line(short handle, short count, short skip, short new_page);
// Copies the job's definition, with page_lines, line and page as they stand, into *def.
short xp_get_def(short handle, xp_print_def* def);
// Lines left for writing on the current page (a page not yet begun counts its titles and
// headings as used); XP_BAD_HANDLE for an unknown handle.
short xp_lines_left(short handle);
