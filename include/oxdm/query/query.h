#pragma once
// oxdmQuery: what a screen or a report reads, as a tree of table nodes
// (see query_node.h). It holds no data; cursors and buffers are built from
// it. The query owns its root, and through it the whole tree.
//
//     oxdmQuery q("orders");
//     oxioFileSpec spec("sales.ord");
//     oxdmQueryNode* orders = q.SetRoot(spec, 2, 0, "", 0x0f);
//     orders->AddColumns("ORDNO,CUSTNO,TOTAL");
//     oxdmQueryNode* lines = orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "", 0x0f);

#include <memory>

#include "oxdm/base/cstring.h"
#include "oxdm/query/query_node.h"

class oxdmQuery {
public:
    explicit oxdmQuery(const CString& id);
    virtual ~oxdmQuery();
    oxdmQuery(const oxdmQuery&) = delete;
    oxdmQuery& operator=(const oxdmQuery&) = delete;

    // Each SetRoot first deletes the tree there was. Without an id the
    // root's id is the dictionary name and table number ("ord2").
    oxdmQueryNode* SetRoot(const oxdmTableDef* table, const oxioFileSpec& spec, int style, int index);
    oxdmQueryNode* SetRoot(const oxdmTableDef* table, const oxioFileSpec& spec, const CString& id, int style,
                           int index);
    // The table is `tableNum` of the spec's dictionary.
    oxdmQueryNode* SetRoot(const oxioFileSpec& spec, int tableNum, int index, const CString& id, int style);

    oxdmQueryNode* Root() const { return root_; }
    const CString& ID() const { return id_; }
    void SetID(const CString& id) { id_ = id; }
    oxdmQueryNode* Node(const CString& id) const;
    // Throws oxdmException ("Column 'ID' is not part of query 'QID'") when
    // no node has it.
    oxdmQueryColumnBase* Column(const CString& id, bool generate) const;
    bool Auditable() const;

private:
    void DeleteRoot();

    // root_ is owned; null until SetRoot.
    CString id_;
    oxdmQueryNode* root_ = nullptr;
};
