#pragma once
// oxdmAuditImpl: the audit trail of a task's buffers. It observes a root
// buffer and its children, keeps the old and new text of every column
// edited on a focus row, and when the row is saved, reverted or deleted
// writes them to the electronic audit log of the record file (always, while
// auditing is on) and to a printed report (when printing is on and the
// operator confirmed the print job).
//
//     oxdmAudit audit(&task);
//     audit.Prompt(&query);     // asks for the print job when printing is on
//     audit.Observe(&buffer);   // the root buffer and, below it, its children
//     ...                       // the operator works; the last handle ends it
//
// Every step of the report is virtual, down to the five print primitives,
// so that a derived class can change the report or catch what is printed.
//
// Not copyable: it is shared through oxdmAudit handles.

#include <map>

#include "oxdm/base/cstring.h"
#include "oxdm/common/print/print.h"

class mvcChange;
class oxData;
class oxTask;
class oxdmBufferedFileDataSource;
class oxdmColumnDef;
class oxdmCursorNode;
class oxdmDSColumnBase;
class oxdmQuery;
class oxdmTableDef;

class oxdmAuditImpl {
public:
    // The texts of one column of the row being edited: before the first edit
    // and after the last.
    struct ColumnChange {
        CString oldValue;
        CString newValue;
    };
    using TableChanges = std::map<const oxdmColumnDef*, ColumnChange>;

    // `task` (not owned, may be null) gives the report's title and the task
    // id of the log entries; it must outlive the object.
    explicit oxdmAuditImpl(oxTask* task);
    // Unregisters the observers and finishes the report.
    virtual ~oxdmAuditImpl();
    oxdmAuditImpl(const oxdmAuditImpl&) = delete;
    oxdmAuditImpl& operator=(const oxdmAuditImpl&) = delete;

    // Starts auditing when it is on and asks the operator for the print job
    // when printing is on. True when auditing is off or the report was
    // confirmed; false when auditing runs without a report.
    virtual bool Prompt(const oxdmQuery* query);
    // Observes the buffer and, recursively, its children; nothing while
    // auditing is not running.
    virtual void Observe(oxdmBufferedFileDataSource* source);
    // For an application that runs its own print job: starts auditing, if
    // on, printing through `printHandle` when printing is on.
    virtual bool InitAuditWithoutHub(const oxdmQuery* query, short printHandle);
    // Sets the report's two heading lines; nothing unless auditing and printing.
    virtual void Start();
    // Ends the print job, if any, and stops auditing.
    virtual void Finish();
    virtual void DoPrintHub(const oxdmQuery* query);
    // Refreshes the settings and answers whether auditing is on; the query
    // is there for a derived class to judge.
    virtual bool OkToAudit(const oxdmQuery* query) const;
    // The hub's callbacks: the operator confirmed, or cancelled.
    virtual short HubPrintProcess(xh_process_def* process);
    virtual void HubTerminate();
    // A hook for a derived report, called before Start by the hub; nothing here.
    virtual void GetHeadings();
    // The observers of the buffers (DSColChanged, DSRowStateChanged, DSRowDeleted).
    virtual void mvcColumnChanged(mvcChange* change);
    virtual void mvcRowStateChanged(mvcChange* change);
    virtual void mvcRowDeleted(mvcChange* change);
    // The report's lines. WriteOld leaves the line open, WriteNew ends it.
    virtual void WriteOld(const oxdmColumnDef* column, const CString& value);
    virtual void WriteNew(const oxdmColumnDef* column, const CString& value);
    virtual void WriteDelete(oxdmBufferedFileDataSource* source, oxdmCursorNode* node);
    virtual void WriteCancel(oxdmBufferedFileDataSource* source);
    virtual void WriteKeys(const CString& label, const oxdmTableDef* table, oxdmBufferedFileDataSource* source,
                           oxdmCursorNode* node);
    virtual void WriteKey(const oxdmColumnDef* column, const CString& value, short indent);
    virtual void WriteChanges(const CString& label, oxdmBufferedFileDataSource* source);
    // The print primitives: the print service's calls as they stand.
    virtual short xpPutField(short handle, xp_field_def* field, x_value_def* value);
    virtual short xpSetLine(short handle, short kind, short line);
    virtual short xpWriteLine(short handle, short count, short skip, short newPage);
    virtual short xpGetDef(short handle, xp_print_def* def);
    virtual short xpLinesLeft(short handle);

    // The column's formatted text of the value; for a check box column
    // "Checked" or "Not Checked".
    // REQUIRES: column and value are not null.
    static CString ValForAudit(oxdmDSColumnBase* column, const oxData* value);
    // The same from a field definition alone: the value's text, a choice's
    // text, or "Checked"/"Not Checked" for a Boolean value.
    // REQUIRES: column and value are not null.
    static CString ValForAudit(const oxdmColumnDef* column, const oxData* value);
    // The index of the buffer's column over the field called `name` (case
    // ignored); -1 when there is none or no buffer.
    static short IndexForOXColumnName(oxdmBufferedFileDataSource* source, const CString& name);
    // Copies `text` into `buffer` of `size` bytes, cut to size - 1 characters.
    // REQUIRES: buffer is not null and size >= 1.
    static void CopyToAlpha(const CString& text, char* buffer, short size);
    // The hub's callbacks; the object is the definition's user data.
    static short StaticHubPrintProcess(xh_process_def* process);
    static void StaticHubTerminate(void* object);

protected:
    // Drops the pending changes of every table that `source` has columns of.
    void ForgetChanges(oxdmBufferedFileDataSource* source);

    // hub: the running hub job, 0 for none; set by the hub's answer and
    // cleared by a cancel and by Finish.
    short hub = 0;
    // printHandle: the print job the report is written to, 0 before one.
    short printHandle = 0;
    // active: auditing runs. Set once by DoPrintHub or InitAuditWithoutHub
    // when auditing is on; cleared by Finish. Nothing is observed or written
    // while it is false.
    bool active = false;
    oxTask* task;  // not owned
    // observerId: the one id of every registration this object makes; 0 when none.
    unsigned long observerId = 0;
    // changes: per table, the columns edited and not yet written. Entries
    // of a table are removed when a row of it is written, deleted or (while
    // printing) reverted; with printing off a reverted row's entries stay
    // and join the next row saved for that table.
    std::map<const oxdmTableDef*, TableChanges> changes;
    // print: lines go to the report. Only ever true while printHandle names
    // a confirmed job (or the application's own).
    bool print = false;
    // waiting: the print confirmation is open.
    bool waiting = false;
};
