#pragma once
// oxdmEvent and its family: the value form of a window message, handed to
// callbacks as the cause of what they are told. Events are plain, copyable
// values, made on the stack where they are raised.
//
// A message is held as the seven fields of a Win32 MSG. hwnd is an opaque
// window handle; wParam and lParam are as wide as a pointer, as on Win32.

#include <cstdint>

#include "oxdm/base/cstring.h"

class CMenu;
class oxdmEvtKey;
class oxdmEvtMouse;

class oxdmEvent {
public:
    oxdmEvent() = default;
    oxdmEvent(void* hwnd, unsigned int message, std::uintptr_t wParam, std::intptr_t lParam,
              unsigned long time = 0, long x = 0, long y = 0)
        : hwnd(hwnd), message(message), wParam(wParam), lParam(lParam), time(time), pt{x, y} {}
    virtual ~oxdmEvent() = default;
    oxdmEvent(const oxdmEvent&) = default;
    oxdmEvent& operator=(const oxdmEvent&) = default;

    // The object itself; AsKey and AsMouse answer it only in the key and
    // mouse events, null elsewhere.
    virtual const oxdmEvent* AsEvent() const { return this; }
    virtual const oxdmEvtKey* AsKey() const { return nullptr; }
    virtual const oxdmEvtMouse* AsMouse() const { return nullptr; }

    // The message, all zero after default construction. Plain data with no
    // invariant between the fields.
    void* hwnd = nullptr;
    unsigned int message = 0;
    std::uintptr_t wParam = 0;
    std::intptr_t lParam = 0;
    unsigned long time = 0;
    struct Point {
        long x = 0;
        long y = 0;
    } pt;
};

// A keyboard message: the key is in wParam, the key data in lParam.
class oxdmEvtKey : public oxdmEvent {
public:
    using oxdmEvent::oxdmEvent;
    const oxdmEvtKey* AsKey() const override { return this; }
};

// A move between grid cells by Tab or an arrow key. It carries the message of
// the key that caused it.
class oxdmEvtGridKeyNav : public oxdmEvtKey {
public:
    enum MoveDirection : int {
        MoveRight = 0,  // Tab: towards the next column
        MoveLeft = 1,   // Shift-Tab: towards the previous column
    };

    oxdmEvtGridKeyNav() = default;
    // key may be null: the message fields then stay zero.
    oxdmEvtGridKeyNav(const CString& fromColumn, const CString& toColumn, MoveDirection moveDir,
                      bool sameRow, const oxdmEvtKey* key)
        : oxdmEvtKey(key ? oxdmEvtKey(*key) : oxdmEvtKey()),
          from(fromColumn), to(toColumn), moveDir(moveDir), sameRow(sameRow) {}
    const oxdmEvtKey* AsKey() const override { return this; }

    const CString& fromColumn() const { return from; }
    const CString& toColumn() const { return to; }
    MoveDirection MoveDir() const { return moveDir; }
    bool SameRow() const { return sameRow; }

private:
    CString from;  // the column label left, empty when none
    CString to;    // the column label entered
    MoveDirection moveDir = MoveRight;
    bool sameRow = true;
};

// A mouse message: wParam holds the button flags, lParam x in its low and y
// in its high 16 bits.
class oxdmEvtMouse : public oxdmEvent {
public:
    using oxdmEvent::oxdmEvent;
    const oxdmEvtMouse* AsMouse() const override { return this; }

    // The point in lParam, each half sign-extended as window coordinates are.
    int X() const { return static_cast<std::int16_t>(static_cast<std::uint16_t>(lParam & 0xFFFF)); }
    int Y() const { return static_cast<std::int16_t>(static_cast<std::uint16_t>((lParam >> 16) & 0xFFFF)); }
};

// A context menu about to be shown or just tracked.
class oxdmEvtCMenu : public oxdmEvent {
public:
    oxdmEvtCMenu(int x, int y, CMenu* menu) : x(x), y(y), menu(menu) {}

    int X() const { return x; }
    int Y() const { return y; }
    CMenu* Menu() const { return menu; }

private:
    int x = 0;  // the point of the request
    int y = 0;
    CMenu* menu = nullptr;  // the menu being built; not owned
};

// A refused write of a data source, with the record status it gave.
class oxdmEvtDataSource : public oxdmEvent {
public:
    explicit oxdmEvtDataSource(int status) : status(status) {}

    int Status() const { return status; }

private:
    int status = 0;
};

// A scroll of the grid. position 0 means the thumb, whose share is fraction.
class oxdmEvtGridScroll : public oxdmEvent {
public:
    oxdmEvtGridScroll(int direction, unsigned int position, float fraction = 0.0f)
        : direction(direction), position(position), fraction(fraction) {}

    int Direction() const { return direction; }
    unsigned int Position() const { return position; }
    float Fraction() const { return fraction; }

private:
    int direction = 0;
    unsigned int position = 0;
    float fraction = 0.0f;
    int spare = 0;  // carried for the grid surface, always 0
};

// One step of the grid's selection: whole clears first; add and extend as the
// modifier keys say; row is the grid row.
class oxdmEvtGridSelect : public oxdmEvent {
public:
    oxdmEvtGridSelect(bool whole, bool add = false, bool extend = false, short row = -1)
        : whole(whole), add(add), extend(extend), row(row) {}

    bool Whole() const { return whole; }
    bool Add() const { return add; }
    bool Extend() const { return extend; }
    short Row() const { return row; }

private:
    bool whole = false;
    bool add = false;
    bool extend = false;
    short row = -1;
    short spare1 = -1;  // carried for the grid surface, always -1
    short spare2 = -1;
};

// A notebook page change.
class oxdmEvtNotebook : public oxdmEvent {
public:
    explicit oxdmEvtNotebook(long page) : page(page) {}

    long Page() const { return page; }

private:
    long page = 0;
};
