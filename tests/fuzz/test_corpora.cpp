// Runs every target on its corpus, so that faults found by a fuzzer stay fixed.
#include "platform/Literals.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>
#include <gtest/gtest.h>
#include <stdexcept>

void fuzz::claim(bool holds, const char *what) {
    if (!holds)
        throw std::logic_error(what);
}

namespace {

class Corpus : public testing::TestWithParam<fuzz::FuzzTarget> {};

TEST_P(Corpus, EveryInputIsSurvivedAndEveryClaimHolds) {
    QLoggingCategory::setFilterRules(u"*=false"_s); // targets may log what is wrong with their input
    const QDir folder(u"" PARLO_CORPORA "/"_s + QLatin1String(GetParam().name));
    const QStringList names = folder.entryList(QDir::Files, QDir::Name);
    ASSERT_FALSE(names.isEmpty());
    for (const QString &name : names) {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_NO_THROW(GetParam().open(file.readAll())) << qPrintable(name);
    }
}

INSTANTIATE_TEST_SUITE_P(FuzzTarget, Corpus, testing::ValuesIn(fuzz::fuzzTargets()),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
