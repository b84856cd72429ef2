#pragma once
// oxdmQueryNode: one table of a query: how it joins its parent, which of its
// columns are wanted and what the user may do to it. It holds no data.
//
// A node owns its columns, its children of both kinds, its filter and its
// copy of the file spec; it is made only by its query (the root) or its
// parent, and destroyed by them. Node ids are unique in the tree
// (GenerateNodeID), column ids too (GenerateColumnID). Any node that has a
// column also carries its table's two stamp columns, which is what lets a
// write detect a change by another user.
//
// Style bits, each with an accessor and a setter of the same name:
//   0x01 CanRead  0x02 CanUpdate  0x04 CanInsert  0x08 CanDelete
//   0x10 CascadedDelete  0x20 CascadedKeyChange  0x40 SuppressDups
//   0x80 CreateFile (the file is created when missing)  0x100 UseRollbackStack

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"

class oxdmColumnBase;
class oxdmColumnDef;
class oxdmFilter;
class oxdmQuery;
class oxdmQueryColumnBase;
class oxdmTableDef;
class oxdmTableRelation;
class oxioFileSpec;

class oxdmQueryNode {
public:
    enum StyleBits {
        StyleCanRead = 0x01,
        StyleCanUpdate = 0x02,
        StyleCanInsert = 0x04,
        StyleCanDelete = 0x08,
        StyleCascadedDelete = 0x10,
        StyleCascadedKeyChange = 0x20,
        StyleSuppressDups = 0x40,
        StyleCreateFile = 0x80,
        StyleUseRollbackStack = 0x100,
    };

    oxdmQueryNode(const oxdmQueryNode&) = delete;
    oxdmQueryNode& operator=(const oxdmQueryNode&) = delete;

    const CString& ID() const { return id_; }
    void SetID(const CString& id) { id_ = id; }
    const oxdmTableDef* Table() const { return table_; }
    const oxioFileSpec& FileSpec() const { return *spec_; }
    oxdmQueryNode* SourceNode() const { return parent_; }
    oxdmTableRelation* SourceRel() const { return rel_; }
    const std::vector<oxdmQueryNode*>& OneToOnes() const { return oneToOnes_; }
    const std::vector<oxdmQueryNode*>& OneToManys() const { return oneToManys_; }
    const std::vector<oxdmQueryColumnBase*>& QueryColumns() const { return columns_; }
    int Style() const { return style_; }
    void SetStyle(int style) { style_ = style; }
    int Index() const { return index_; }
    const oxdmFilter& Filter() const { return *filter_; }
    // Replaces the filter with a copy of `filter`.
    void SetFilter(const oxdmFilter& filter);

    bool CanRead() const { return (style_ & StyleCanRead) != 0; }
    void SetCanRead(bool on) { SetBit(StyleCanRead, on); }
    bool CanUpdate() const { return (style_ & StyleCanUpdate) != 0; }
    void SetCanUpdate(bool on) { SetBit(StyleCanUpdate, on); }
    bool CanInsert() const { return (style_ & StyleCanInsert) != 0; }
    void SetCanInsert(bool on) { SetBit(StyleCanInsert, on); }
    bool CanDelete() const { return (style_ & StyleCanDelete) != 0; }
    void SetCanDelete(bool on) { SetBit(StyleCanDelete, on); }
    bool CascadedDelete() const { return (style_ & StyleCascadedDelete) != 0; }
    void SetCascadedDelete(bool on) { SetBit(StyleCascadedDelete, on); }
    bool CascadedKeyChange() const { return (style_ & StyleCascadedKeyChange) != 0; }
    void SetCascadedKeyChange(bool on) { SetBit(StyleCascadedKeyChange, on); }
    bool SuppressDups() const { return (style_ & StyleSuppressDups) != 0; }
    void SetSuppressDups(bool on) { SetBit(StyleSuppressDups, on); }
    bool CreateFile() const { return (style_ & StyleCreateFile) != 0; }
    void SetCreateFile(bool on) { SetBit(StyleCreateFile, on); }
    bool UseRollbackStack() const { return (style_ & StyleUseRollbackStack) != 0; }
    void SetUseRollbackStack(bool on) { SetBit(StyleUseRollbackStack, on); }

    // Children. The id of a new child is made unique in the tree (the user
    // is told when it had to change); without an id it is the dictionary
    // name and table number ("ord3").
    oxdmQueryNode* NewOneToOne(oxdmTableRelation* rel, const oxdmTableDef* table, const oxioFileSpec& spec,
                               int style, int index);
    oxdmQueryNode* NewOneToOne(oxdmTableRelation* rel, const oxdmTableDef* table, const oxioFileSpec& spec,
                               const CString& id, int style, int index);
    oxdmQueryNode* NewOneToMany(oxdmTableRelation* rel, const oxdmTableDef* table, const oxioFileSpec& spec,
                                int style, int index);
    oxdmQueryNode* NewOneToMany(oxdmTableRelation* rel, const oxdmTableDef* table, const oxioFileSpec& spec,
                                const CString& id, int style, int index);
    // A child of table `tableNum` of the spec's dictionary, joined by text
    // such as "A=B,C=D"; its kind is decided by the join (see
    // oxdmTableRelation::ParseString). Null for a malformed text. An
    // explicit id is taken as it stands.
    oxdmQueryNode* AddChildNode(const oxioFileSpec& spec, int tableNum, const CString& joinText, int index,
                                const CString& id, int style);

    // Columns. The node takes ownership of a column given; ids are made
    // unique in the tree. "#ATTACH" names the attachments column.
    void AddColumn(const CString& name, int style);
    void AddColumn(oxdmQueryColumnBase* column);
    // Comma-separated names, not trimmed, each with style 1.
    void AddColumns(const CString& names);
    // Asks for every column of the table (operator stamps only with
    // withOperatorFields), generated now or on first need.
    void AddAllColumns(bool all, bool generateNow, bool withOperatorFields);

    // Search by id, ignoring case: this node, then one-to-ones, then
    // one-to-manys as asked, depth first; null when absent. With generate,
    // columns asked for by AddAllColumns are generated first.
    oxdmQueryColumnBase* Column(const CString& id, bool generate, bool oneToOnes, bool oneToManys) const;
    // Appends this node's columns, then its children's as asked. With
    // refresh, custom fields defined since are picked up first.
    void Columns(std::vector<oxdmColumnBase*>& out, bool refresh, bool oneToOnes, bool oneToManys) const;
    // An empty id or this node's id (case counts) gives this node; then the
    // one-to-ones and the one-to-manys, depth first.
    oxdmQueryNode* Node(const CString& id, bool oneToOnes, bool oneToManys) const;
    // The root of the tree.
    oxdmQueryNode* Root() const;

protected:
    friend class oxdmQuery;

    // REQUIRES: table is not null.
    oxdmQueryNode(const CString& id, const oxdmTableDef* table, const oxioFileSpec& spec, oxdmQueryNode* parent,
                  oxdmTableRelation* rel, int style, int index);
    virtual ~oxdmQueryNode();

    // The audit mode of the table is 1, or a child is auditable.
    bool Auditable() const;

private:
    void SetBit(int bit, bool on) { style_ = on ? (style_ | bit) : (style_ & ~bit); }
    oxdmQueryNode* NewChild(bool oneToOne, oxdmTableRelation* rel, const oxdmTableDef* table,
                            const oxioFileSpec& spec, const CString& id, int style, int index);
    // `id`, or id-1, id-2, ... when the tree holds it; tells the user when
    // the id had to change.
    CString GenerateNodeID(const CString& id) const;
    // `id`, or id-1, id-2, ... when the tree holds a column of it.
    CString GenerateColumnID(const CString& id) const;
    // Adds the table's stamp columns that this node lacks, once.
    void IncludeTimeAndDateStamps();
    // Adds every column asked for by AddAllColumns, once.
    void GenerateAllColumns();
    // Whether a table column of this node stands for `def`.
    bool HasTableColumn(const oxdmColumnDef* def) const;
    // The table, which belongs to the process-wide dictionary and may
    // learn new custom fields.
    oxdmTableDef* MutableTable() const;

    // Invariants: table_ is the dictionary's (not owned); spec_, filter_,
    // the children and the columns are owned, spec_ and filter_ never null;
    // parent_ and rel_ are null exactly at the root, rel_ belongs to the
    // dictionary manager. stampsAdded_ and generated_ guard the one-time
    // passes; generated_ is cleared only by a refreshing Columns.
    CString id_;
    const oxdmTableDef* table_;
    std::unique_ptr<oxioFileSpec> spec_;
    oxdmQueryNode* parent_;
    oxdmTableRelation* rel_;
    std::vector<oxdmQueryNode*> oneToOnes_;
    std::vector<oxdmQueryNode*> oneToManys_;
    std::vector<oxdmQueryColumnBase*> columns_;
    bool allColumns_ = false;
    bool withOperatorFields_ = false;
    bool stampsAdded_ = false;
    int style_;
    int index_;
    std::unique_ptr<oxdmFilter> filter_;
    bool generated_ = false;
};

// The dictionary name of a spec: its own dictionary, the extension of its
// file name.
CString oxdmSpecDictionary(const oxioFileSpec& spec);
