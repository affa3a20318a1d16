// Widgets from interface descriptions.
#pragma once

#include <QHash>
#include <QString>
#include <memory>

class QUiLoader;
class QWidget;

namespace platform {

// Builds widgets from `.ui` files. Each file is read from disk once. Main thread only.
class InterfaceLoader {
public:
    // Pictures that a description names are looked for in the folder.
    explicit InterfaceLoader(const QString &folder);
    ~InterfaceLoader();
    Q_DISABLE_COPY_MOVE(InterfaceLoader)

    // The top widget, with no parent; nullptr, with one line in the log, when the file cannot be read or is
    // malformed.
    [[nodiscard]] std::unique_ptr<QWidget> load(const QString &path);

private:
    [[nodiscard]] QByteArray contentOf(const QString &path);

    QString m_folder;
    std::unique_ptr<QUiLoader> m_loader; // made when first needed: it looks for widget plug-ins
    QHash<QString, QByteArray> m_contents;
};

} // namespace platform
