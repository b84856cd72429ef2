#pragma once
// BufferWatch: how the console learns what a command did to a buffer, the
// way a screen does: by observing it. It counts the focus moves, deleted
// rows and saved rows that one buffer reports between two calls of Reset.
//
// Invariants: the counts are those of the changes buffer_ sent since the
// last Reset. Ownership: buffer_ is not owned and must outlive
// the watch; every registration is removed by the destructor.

class oxdmBufferedFileDataSource;
class mvcChange;

class BufferWatch {
public:
    explicit BufferWatch(oxdmBufferedFileDataSource& buffer);
    ~BufferWatch();
    BufferWatch(const BufferWatch&) = delete;
    BufferWatch& operator=(const BufferWatch&) = delete;

    void Reset() { focusMoves_ = deletes_ = saves_ = 0; }
    int FocusMoves() const { return focusMoves_; }
    // Rows deleted: with a cascade, the child records taken too.
    int Deletes() const { return deletes_; }
    // Rows written: a new row inserted or an existing row updated.
    int Saves() const { return saves_; }

private:
    void OnChange(mvcChange* change);

    oxdmBufferedFileDataSource& buffer_;
    unsigned long id_ = 0;
    int focusMoves_ = 0;
    int deletes_ = 0;
    int saves_ = 0;
};
