// Texts, images and windows of a bundle.
#include "platform/Literals.h"
#include "platform/services/bundle/Bundle.h"
#include "platform/services/bundle/StringsTable.h"
#include "tests/platform/TestFolder.h"
#include "tests/support/Warnings.h"

#include <QLabel>

namespace {

using platform::Bundle;

class BundleTest : public testing::Test {
protected:
    void put(const QString &name, const QByteArray &content) const { folder.put(name, content); }
    void putBitmap(const QString &name, int side, Qt::GlobalColor colour) const {
        QImage image(side, side, QImage::Format_ARGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(folder.path(name)));
    }

    TestFolder folder;
    std::unique_ptr<Bundle> bundle = platform::makeFolderBundle(folder.path());
};

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
}

TEST(StringsTable, AMalformedEntryIsSkippedUpToItsEnd) {
    const QByteArray good = "\"good\" = \"text\";";
    for (const QByteArray &text :
         {"key = \"x\";" + good, "\"key\" \"x\";" + good, "\"key\" = x;" + good, ";" + good,
          "\"key\" = \"x\" \"y\";" + good, good + "\"key\" = \"x", good + "\"key", good + "\"key\" = \"\\"}) {
        bool isWhole = true;
        const auto table = platform::parseStringsTable(text, &isWhole);
        EXPECT_EQ(table, (QHash<QString, QString>{{u"good"_s, u"text"_s}})) << text.constData();
        EXPECT_FALSE(isWhole) << text.constData();
    }
}

TEST_F(BundleTest, TextsComeFromTheirTableOrFallBack) {
    put(u"en.lproj/One.strings"_s, "\"key\" = \"text\"; \"empty\" = \"\";");
    put(u"xx.lproj/One.strings"_s, "\"key\" = \"a language that nobody prefers\";");
    EXPECT_EQ(bundle->localizedString(u"key"_s, u"fallback"_s, u"One"_s), u"text"_s);
    EXPECT_EQ(bundle->localizedString(u"empty"_s, u"fallback"_s, u"One"_s), u""_s);
    EXPECT_EQ(bundle->localizedString(u"missing"_s, u"fallback"_s, u"One"_s), u"fallback"_s);
    EXPECT_TRUE(bundle->localizedString(u"key"_s, QString(), u"Two"_s).isNull());
}

TEST_F(BundleTest, AnImageHasTheSameSizeInPointsAtEachRatio) {
    put(u"icon.svg"_s, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"10\">"
                       "<rect width=\"10\" height=\"10\" fill=\"#ff0000\"/></svg>");
    for (const qreal ratio : {1.0, 1.5, 2.0, 3.0}) {
        const QImage image = bundle->image(u"icon"_s, ratio);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(20, 10)) << ratio;
        EXPECT_EQ(image.pixelColor(image.width() / 2 - 1, 0), QColor(Qt::red)) << "a sharp edge at " << ratio;
        EXPECT_EQ(image.pixelColor(image.width() / 2, 0).alpha(), 0) << "a sharp edge at " << ratio;
    }
    putBitmap(u"both.png"_s, 16, Qt::red);
    putBitmap(u"both@2x.png"_s, 32, Qt::blue);
    putBitmap(u"plain.png"_s, 16, Qt::red);
    putBitmap(u"sharp@2x.png"_s, 32, Qt::blue);
    const std::tuple<const char *, qreal, QColor> bitmaps[] = {
        {"both", 1, Qt::red},  {"both.png", 2, Qt::blue}, {"both", 1.5, Qt::blue},
        {"plain", 2, Qt::red}, {"sharp", 1, Qt::blue},    {"sharp", 2, Qt::blue}};
    for (const auto &[name, ratio, colour] : bitmaps) {
        const QImage image = bundle->image(QLatin1String(name), ratio);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(16, 16)) << name << ratio;
        EXPECT_EQ(image.pixelColor(0, 0), colour) << name << ratio;
    }
    expectWarning(u"broken.png cannot be read"_s);
    put(u"broken.png"_s, "no image");
    for (const QString &name : {u"missing"_s, u"broken"_s, u"icon.png"_s, QString()})
        EXPECT_TRUE(bundle->image(name).isNull()) << qPrintable(name);
}

TEST_F(BundleTest, AnInterfaceIsBuiltAnewEachTimeAndOnlyFromAWholeDescription) {
    put(u"Sheet.ui"_s,
        "<ui version=\"4.0\"><class>Sheet</class><widget class=\"QWidget\" name=\"sheet\">"
        "<widget class=\"QLabel\" name=\"title\"><property name=\"text\"><string>Hi</string></property>"
        "</widget></widget></ui>");
    const auto first = bundle->loadInterface(u"Sheet"_s);
    const auto second = bundle->loadInterface(u"Sheet"_s);
    ASSERT_TRUE(first && second && second->findChild<QLabel *>(u"title"_s));
    EXPECT_EQ(second->findChild<QLabel *>(u"title"_s)->text(), u"Hi"_s);
    expectWarning(u"interface description"_s);
    put(u"Cut.ui"_s, "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"w\">");
    put(u"Other.ui"_s, "<html/>");
    put(u"Empty.ui"_s, "");
    for (const char *name : {"Cut", "Other", "Empty", "Missing"})
        EXPECT_EQ(bundle->loadInterface(QLatin1String(name)), nullptr) << name;
}

} // namespace
