// What libFuzzer calls. One target is linked into each fuzzer.
#include "tests/fuzz/FuzzTarget.h"

#include <QApplication>
#include <QLoggingCategory>
#include <cstdlib>

void fuzz::claim(bool holds, const char *what) {
    if (holds)
        return;
    std::fprintf(stderr, "a claim does not hold: %s\n", what);
    std::abort();
}

extern "C" int LLVMFuzzerInitialize(int *, char ***) {
    static int argc = 1;
    static char name[] = "fuzz";
    static char *argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(argc, argv);
    QLoggingCategory::setFilterRules("*=false"); // targets would log bad input thousands of times a second
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    fuzz::fuzzTargets().front().open(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    return 0;
}
