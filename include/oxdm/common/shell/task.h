#pragma once
// oxTask, the context of a running task, and the application object.
//
// The data layer hands an oxTask down opaque and reads only its caption
// (the fourth virtual operation, for the titles of message boxes) and ID().
// The application object is set by the application at start-up; the library
// reads its Code() (its name for itself, such as "SM").

#include "oxdm/base/cstring.h"

class oxTask {
public:
    explicit oxTask(short id = 0, const CString& caption = CString()) : id_(id), caption_(caption) {}
    virtual ~oxTask() = default;

    // Opens and closes the task's windows; the data layer never calls them.
    virtual bool Open() { return true; }
    virtual void Close() {}
    // The caption of the task's window: the title of its message boxes.
    virtual CString Caption() const { return caption_; }

    short ID() const { return id_; }
    void SetCaption(const CString& caption) { caption_ = caption; }

private:
    short id_;
    CString caption_;
};

class oxApp {
public:
    explicit oxApp(const CString& code) : code_(code) {}
    virtual ~oxApp() = default;
    const CString& Code() const { return code_; }

private:
    CString code_;
};

// The application object of the running program and the main application
// of a family of programs; null until the application sets them. Neither is
// owned by the library.
oxApp* OXGetApp();
oxApp* OXGetMainApp();
void OXSetApp(oxApp* app);
void OXSetMainApp(oxApp* app);
