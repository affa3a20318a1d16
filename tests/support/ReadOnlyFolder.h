// Makes a folder read-only during its lifetime.
#pragma once

#include <QString>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

// Root can write everywhere, so the thread uses another file-system user meanwhile.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const QString &path)
        : m_path(path.toUtf8()) {
        struct stat status {};
        ::stat(m_path.constData(), &status);
        m_formerMode = status.st_mode;
        ::chmod(m_path.constData(), readAndEnter);
        if (::geteuid() == 0)
            ::setfsuid(nobody);
    }
    ~ReadOnlyFolder() {
        ::setfsuid(::geteuid());
        ::chmod(m_path.constData(), m_formerMode);
    }
    ReadOnlyFolder(const ReadOnlyFolder &) = delete;
    ReadOnlyFolder &operator=(const ReadOnlyFolder &) = delete;

private:
    static constexpr mode_t readAndEnter = 0555;
    static constexpr uid_t nobody = 65534;

    QByteArray m_path;
    mode_t m_formerMode = 0;
};
