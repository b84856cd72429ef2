#include "oxdm/query/live_columns.h"

#include "oxdm/base/exception.h"
#include "oxdm/common/shell/message_box.h"

namespace {

oxdmLiveColumnFactory* installedFactory = nullptr;
bool voidColumnNoticeShown = false;

// The bullet of the list in the notice, U+2022 in UTF-8.
constexpr const char* kBullet = "\xE2\x80\xA2";

}  // namespace

oxdmLiveColumnFactory* oxdmSetLiveColumnFactory(oxdmLiveColumnFactory* factory) {
    oxdmLiveColumnFactory* former = installedFactory;
    installedFactory = factory;
    return former;
}

oxdmLiveColumnFactory& oxdmLiveColumns() {
    if (installedFactory == nullptr) {
        throw oxdmException("Live columns can't be built: no buffered data source layer is installed.");
    }
    return *installedFactory;
}

CString oxdmVoidColumnText(const CString& fileName) {
    return "The " + fileName +
           " does not contain all custom fields.\n\nTo add these fields, please do one of the following:" + "\n" +
           kBullet + "  From OX-Main, select Tools > Upgrade Files." + "\n" + kBullet +
           "  From Desktop's Tasks pane, double-click the Quillfen Office\\Common Tasks\\Tools\\Upgrade Files task.";
}

bool oxdmVoidColumnNotice(const CString& fileName) {
    if (voidColumnNoticeShown) return false;
    voidColumnNoticeShown = true;
    oxdmMessageBox(oxdmVoidColumnText(fileName), fileName, oxdmBox::IconInformation);
    return true;
}
