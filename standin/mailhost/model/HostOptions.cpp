#include "standin/mailhost/model/HostOptions.h"

#include <QVersionNumber>

namespace mailhost {

bool isNewerGeneration(const QString &hostVersion) {
    return QVersionNumber::fromString(hostVersion) >= QVersionNumber(15, 9);
}

} // namespace mailhost
