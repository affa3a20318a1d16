#include "platform/runtime/Loading.h"

#include <QFile>
#include <QList>
#include <dlfcn.h>
#include <utility>

namespace rt {

namespace {

QList<void (*)()> &pendingLoadMethods() {
    static auto *pending = new QList<void (*)()>;
    return *pending;
}

} // namespace

void addLoadMethod(void (*load)()) {
    pendingLoadMethods().append(load);
}

bool loadImage(const QString &path, QString *error) {
    // Never closed, because host classes now have pointers to its functions.
    if (!dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL)) {
        *error = QString::fromLocal8Bit(dlerror());
        return false;
    }
    const QList<void (*)()> methods = std::exchange(pendingLoadMethods(), {});
    for (void (*load)() : methods)
        load();
    return true;
}

} // namespace rt
