#pragma once
// oxdmDSBookmark: a value handle on a shared bookmark body, and
// oxdmDSBookmarkImpl, the abstract body that each family of data sources
// implements for its own rows.
//
// A handle shares its body with its copies through a counted pointer (16-bit
// count); the last copy deletes the body. A handle without a body answers
// false to every question, NotInRange for a range state and null from Split
// and MakeRange. Bodies compare only with bodies of their own kind and of
// their own data source; any other comparison answers false.

#include "oxdm/base/smart_ptr.h"

class oxdmDSBookmark;

class oxdmDSBookmarkImpl {
public:
    oxdmDSBookmarkImpl() = default;
    oxdmDSBookmarkImpl(const oxdmDSBookmarkImpl&) = default;
    oxdmDSBookmarkImpl& operator=(const oxdmDSBookmarkImpl&) = default;

    virtual bool operator==(const oxdmDSBookmarkImpl& other) const = 0;
    virtual bool operator<(const oxdmDSBookmarkImpl& other) const = 0;
    virtual bool IsValid() const = 0;
    virtual bool CanMultiSelect() const { return false; }
    virtual bool GotoFirst() = 0;
    virtual bool GotoNext() = 0;
    virtual bool BeforeRange(const oxdmDSBookmarkImpl& other) const = 0;
    virtual bool BeforeRange(short row) const = 0;
    // The answers are oxdmDSBookmark::InRangeState values.
    virtual int InRange(const oxdmDSBookmarkImpl& other) const = 0;
    virtual int InRange(short row) const = 0;
    virtual bool AfterRange(const oxdmDSBookmarkImpl& other) const = 0;
    virtual bool AfterRange(short row) const = 0;
    virtual bool Delete(const oxdmDSBookmarkImpl& other) = 0;
    virtual bool Delete(short row) = 0;
    // Split and MakeRange give a new body that the caller owns, or null.
    virtual oxdmDSBookmarkImpl* Split(const oxdmDSBookmarkImpl& other) = 0;
    virtual oxdmDSBookmarkImpl* Split(short row) = 0;
    virtual oxdmDSBookmarkImpl* MakeRange(const oxdmDSBookmarkImpl& other) const = 0;
    virtual oxdmDSBookmarkImpl* MakeRange(short row) const = 0;
    virtual short GetC3Range() const { return 0; }
    virtual ~oxdmDSBookmarkImpl() = default;
};

class oxdmDSBookmark {
public:
    enum InRangeState {
        NotInRange = 0,
        OnlyRowInRange = 1,
        StartOfRange = 2,
        InsideRange = 3,
        EndOfRange = 4,
    };

    oxdmDSBookmark() = default;
    // Takes ownership of body (which may be null).
    explicit oxdmDSBookmark(oxdmDSBookmarkImpl* body) : body_(body) {}
    oxdmDSBookmark(const oxdmDSBookmark&) = default;
    oxdmDSBookmark& operator=(const oxdmDSBookmark&) = default;
    virtual ~oxdmDSBookmark() = default;

    bool operator==(const oxdmDSBookmark& other) const;
    bool operator<(const oxdmDSBookmark& other) const;
    bool IsValid() const;
    bool CanMultiSelect() const;
    bool GotoFirst();
    bool GotoNext();
    bool BeforeRange(short row) const;
    bool BeforeRange(const oxdmDSBookmark& other) const;
    InRangeState InRange(short row) const;
    InRangeState InRange(const oxdmDSBookmark& other) const;
    bool AfterRange(short row) const;
    bool AfterRange(const oxdmDSBookmark& other) const;
    bool Delete(short row);
    bool Delete(const oxdmDSBookmark& other);
    // The new handle belongs to the caller; null without a body or on failure.
    oxdmDSBookmark* Split(short row);
    oxdmDSBookmark* Split(const oxdmDSBookmark& other);
    oxdmDSBookmark* MakeRange(short row) const;
    oxdmDSBookmark* MakeRange(const oxdmDSBookmark& other) const;
    short GetC3Range() const;

    // The body, null for an empty handle; for the data source that made it.
    oxdmDSBookmarkImpl* Impl() const { return body_.get(); }

private:
    oxBase::SmartPtr<oxdmDSBookmarkImpl> body_;
};
