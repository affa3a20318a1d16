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
    // Searches the folder for pictures that a description names.
    explicit InterfaceLoader(const QString &folder);
    ~InterfaceLoader();
    Q_DISABLE_COPY_MOVE(InterfaceLoader)

    // The top widget, without a parent. Returns nullptr and logs one line if the file is unreadable or
    // malformed.
    [[nodiscard]] std::unique_ptr<QWidget> load(const QString &path);

private:
    [[nodiscard]] QByteArray contentOf(const QString &path);

    QString m_folder;
    std::unique_ptr<QUiLoader> m_loader; // made on first use: it searches for widget plug-ins
    QHash<QString, QByteArray> m_contents;
};

} // namespace platform
