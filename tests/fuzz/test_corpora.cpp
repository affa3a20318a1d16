// Runs every target on its corpus, so that faults found by a fuzzer stay fixed.
#include "platform/Literals.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace {

struct BrokenClaim {
    const char *what;
};

} // namespace

void fuzz::claim(bool holds, const char *what) {
    if (!holds)
        throw BrokenClaim{what};
}

namespace fuzz {

static void PrintTo(const FuzzTarget &target, std::ostream *out) {
    *out << target.name;
}

} // namespace fuzz

namespace {

class Corpus : public testing::TestWithParam<fuzz::FuzzTarget> {
protected:
    // A target may say in the log what is wrong with its input.
    void SetUp() override {
        m_before = qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    }
    void TearDown() override { qInstallMessageHandler(m_before); }

private:
    QtMessageHandler m_before = nullptr;
};

TEST_P(Corpus, EveryInputIsSurvivedAndEveryClaimHolds) {
    const QDir folder(u"" PARLO_CORPORA "/"_s + QLatin1String(GetParam().name));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        SCOPED_TRACE(qPrintable(name));
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        try {
            GetParam().open(file.readAll());
        } catch (const BrokenClaim &claim) {
            ADD_FAILURE() << "does not hold: " << claim.what;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(FuzzTarget, Corpus, testing::ValuesIn(fuzz::fuzzTargets()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
