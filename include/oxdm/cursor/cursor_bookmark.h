#pragma once
// oxdmCursorBookmark: the name of one row of a cursor tree. What it holds is
// the concrete node's concern; the caller of CreateBookmark owns it.

class oxdmCursorBookmark {
public:
    virtual ~oxdmCursorBookmark() = default;
    // Puts the tree back on the row; false when the row can't be reached.
    virtual bool GoTo() = 0;
    virtual bool EqualTo(const oxdmCursorBookmark* other) const = 0;
    virtual bool LessThan(const oxdmCursorBookmark* other) const = 0;
    // True when neither EqualTo nor LessThan holds.
    virtual bool GreaterThan(const oxdmCursorBookmark* other) const;
    // A new bookmark of the same row, owned by the caller.
    virtual oxdmCursorBookmark* Clone() const = 0;
};
