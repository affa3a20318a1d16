// Texts and images of a bundle.
#include "platform/Literals.h"
#include "platform/services/bundle/Bundle.h"
#include "platform/services/bundle/StringsTable.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/Warnings.h"

namespace {

TEST(StringsTable, EntriesCommentsAndEscapesAreRead) {
    bool isWhole = false;
    const auto table = platform::parseStringsTable("\xef\xbb\xbf/* a comment; \"no\" = \"entry\"; */\n"
                                                   "// \"not\" = \"this\";\n"
                                                   "\"quote\"=\"say \\\"hi\\\" \\\\ \\n\\t\\U00e9\";"
                                                   "\"empty\" = \"\"; \"url\" = \"http://a/*b*/\";\n"
                                                   "\"Gr\xc3\xbc\xc3\x9f"
                                                   "e\" = \"%@ = 1;\";",
                                                   &isWhole);
    const QHash<QString, QString> expected{{u"quote"_s, u"say \"hi\" \\ \n\té"_s},
                                           {u"empty"_s, u""_s},
                                           {u"url"_s, u"http://a/*b*/"_s},
                                           {u"Grüße"_s, u"%@ = 1;"_s}};
    EXPECT_EQ(table, expected);
    EXPECT_TRUE(isWhole);
    EXPECT_EQ(platform::parseStringsTable("\"key\" = x; \"empty\" = \"\";", &isWhole).keys(),
              QStringList{u"empty"_s})
        << "a malformed entry is skipped up to its end";
    EXPECT_FALSE(isWhole);
}

TEST(Bundle, ABitmapComesFromTheFileForItsRatio) {
    const TestFolder folder;
    const std::tuple<const char *, int, QColor> files[] = {
        {"both.png", 16, Qt::red}, {"both@2x.png", 32, Qt::blue}, {"plain.png", 16, Qt::red}};
    for (const auto &[name, side, colour] : files) {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(folder.path(QLatin1String(name))));
    }
    folder.put(u"broken.png"_s, "no image");
    const auto bundle = platform::makeFolderBundle(folder.path());
    const std::tuple<const char *, qreal, QColor> bitmaps[] = {
        {"both", 1, Qt::red}, {"both.png", 2, Qt::blue}, {"both", 1.5, Qt::blue}, {"plain", 2, Qt::red}};
    for (const auto &[name, ratio, colour] : bitmaps) {
        const QImage image = bundle->image(QLatin1String(name), ratio);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(16, 16)) << name << ratio;
        EXPECT_EQ(image.pixelColor(0, 0), colour) << name << ratio;
    }
    expectWarning(u"broken.png cannot be read"_s);
    for (const QString &name : {u"missing"_s, u"broken"_s, QString()})
        EXPECT_TRUE(bundle->image(name).isNull()) << qPrintable(name);
}

} // namespace
