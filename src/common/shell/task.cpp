#include "oxdm/common/shell/task.h"

namespace {

oxApp* g_app = nullptr;      // not owned
oxApp* g_mainApp = nullptr;  // not owned

}  // namespace

oxApp* OXGetApp() { return g_app; }
oxApp* OXGetMainApp() { return g_mainApp; }
void OXSetApp(oxApp* app) { g_app = app; }
void OXSetMainApp(oxApp* app) { g_mainApp = app; }
