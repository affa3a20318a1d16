// A process that ends with this one, however this one ends.
#pragma once

#include <QProcess>

namespace standin {

class Child : public QProcess {
public:
    Child();
    ~Child() override; // kills it
    // Returns false, with a warning that says why, if it does not start.
    bool run(const QString &program, const QStringList &arguments = {});
};

} // namespace standin
