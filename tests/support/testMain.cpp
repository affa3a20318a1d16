// The main function of every test program.
#include "platform/Literals.h"
#include "tests/support/Warnings.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace {

struct Announced {
    QString part;
    bool seen = false;
};

QList<Announced> announcements;
QStringList unexpected;

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &text) {
    std::fprintf(stderr, "%s\n", qPrintable(text));
    // The platform without a display says this of every window that has a minimum size.
    const bool harmless = text.contains(u"propagateSizeHints"_s);
    if (type == QtDebugMsg || type == QtInfoMsg || harmless)
        return;
    bool wasAnnounced = false;
    for (Announced &announced : announcements)
        if (text.contains(announced.part))
            wasAnnounced = announced.seen = true;
    if (!wasAnnounced)
        unexpected.append(text);
}

class WarningListener : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo &) override {
        announcements.clear();
        unexpected.clear();
    }
    void OnTestEnd(const testing::TestInfo &) override {
        for (const QString &text : std::as_const(unexpected))
            ADD_FAILURE() << "unexpected warning: " << qPrintable(text);
        for (const Announced &announced : std::as_const(announcements))
            EXPECT_TRUE(announced.seen) << "a warning did not come: " << qPrintable(announced.part);
    }
};

} // namespace

void expectWarning(const QString &part) {
    announcements.append({part});
}

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    qInstallMessageHandler(handleMessage);
    // The listeners own it; it comes before the printer, so that what it adds is printed with the test.
    testing::TestEventListeners &listeners = testing::UnitTest::GetInstance()->listeners();
    testing::TestEventListener *printer = listeners.Release(listeners.default_result_printer());
    listeners.Append(new WarningListener);
    listeners.Append(printer);
    return RUN_ALL_TESTS();
}
