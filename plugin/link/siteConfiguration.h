// The small file of what the plug-in learnt from the client, for times when the client cannot be asked.
#pragma once

#include "platform/runtime/Value.h"

#include <QString>
#include <QVariantMap>

namespace siteConfiguration {

[[nodiscard]] QString path();
// Its text; "" when there is no such file.
[[nodiscard]] QString text();
// One member; no value when the file does not hold it.
[[nodiscard]] rt::Value member(const QString &key);
// Changes one member and leaves the others as they are. Errors are not reported.
void setMember(const QString &key, const rt::Value &value);

} // namespace siteConfiguration
