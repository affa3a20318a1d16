// Faults of the disk, each during the lifetime of an object.
#pragma once

#include <QString>
#include <csignal>
#include <sys/fsuid.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

// A full disk: no file of this process can grow beyond the given size.
class FullDisk {
public:
    explicit FullDisk(rlim_t largestFile = 64) {        // octets
        m_formerSignal = std::signal(SIGXFSZ, SIG_IGN); // the write fails instead
        ::getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit full{largestFile, m_former.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_formerSignal);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    rlimit m_former{};
    void (*m_formerSignal)(int) = SIG_DFL;
};

// A read-only folder. Root can write everywhere, so the thread uses another file-system user meanwhile.
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
