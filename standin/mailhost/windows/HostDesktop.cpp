// Apart from the rest of the application object: a test that has services of its own does not link the
// desktop's.
#include "standin/mailhost/windows/HostApplication.h"

#include "platform/services/Services.h"
#include "standin/support/BusNames.h"

namespace mailhost {

void HostApplication::installDesktopServices() const {
    platform::DesktopOptions desktop;
    desktop.bundleIdentifier = standin::names::host;
    desktop.documentsFolder = m_options.documentsFolder;
    desktop.defaultsFolder = m_options.defaultsFolder;
    platform::setServices(platform::makeDesktopServices(desktop));
}

} // namespace mailhost
