// Faults of the disk.
#pragma once

#include <csignal>
#include <sys/resource.h>

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
