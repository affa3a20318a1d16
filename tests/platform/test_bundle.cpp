#include "platform/services/Bundle.h"
#include "platform/services/StringsTable.h"
#include "tests/support/Warnings.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

using platform::Bundle;

class BundleTest : public testing::Test {
protected:
    void put(const QString &name, const QByteArray &content) const {
        const QString path = folder.filePath(name);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void putBitmap(const QString &name, const QSize &size, Qt::GlobalColor colour) const {
        QImage image(size, QImage::Format_ARGB32);
        image.fill(colour);
        ASSERT_TRUE(image.save(folder.filePath(name)));
    }

    QTemporaryDir folder;
    std::unique_ptr<Bundle> bundle = platform::makeFolderBundle(folder.path());
};

TEST(StringsTable, EntriesCommentsAndEscapesAreRead) {
    bool isWhole = false;
    const auto table = platform::parseStringsTable("\xef\xbb\xbf/* a comment; \"no\" = \"entry\"; */\n"
                                                   "\"key\" = \"text\";\n"
                                                   "// \"not\" = \"this\";\n"
                                                   "\"quote\"=\"say \\\"hi\\\" \\\\ \\n\\t\\U00e9\";"
                                                   "\"empty\" = \"\"; \"url\" = \"http://a/*b*/\";\n"
                                                   "\"Gr\xc3\xbc\xc3\x9f"
                                                   "e\" = \"%@ = 1;\";",
                                                   &isWhole);
    const QHash<QString, QString> expected{{u"key"_qs, u"text"_qs},
                                           {u"quote"_qs, u"say \"hi\" \\ \n\té"_qs},
                                           {u"empty"_qs, u""_qs},
                                           {u"url"_qs, u"http://a/*b*/"_qs},
                                           {u"Grüße"_qs, u"%@ = 1;"_qs}};
    EXPECT_EQ(table, expected);
    EXPECT_TRUE(isWhole);
    EXPECT_FALSE(table.value(u"empty"_qs).isNull());
}

TEST(StringsTable, AMalformedEntryCostsNoOther) {
    for (const char *malformed :
         {"key = \"x\";", "\"key\" \"x\";", "\"key\" = x;", "= ;", ";", "\"key\" = \"x\" \"y\";"}) {
        bool isWhole = true;
        const auto table =
            platform::parseStringsTable(QByteArray(malformed) + " \"good\" = \"text\";", &isWhole);
        EXPECT_EQ(table, (QHash<QString, QString>{{u"good"_qs, u"text"_qs}})) << malformed;
        EXPECT_FALSE(isWhole) << malformed;
    }
    for (const char *cut :
         {"\"key\" = \"x", "\"key\" = ", "\"key", "\"key\" = \"x\"", "\"key\" = \"\\", "\"k\" = \"\\U1"}) {
        bool isWhole = true;
        EXPECT_TRUE(platform::parseStringsTable(cut, &isWhole).isEmpty()) << cut;
        EXPECT_FALSE(isWhole) << cut;
    }
}

TEST_F(BundleTest, TextsComeFromTheirTableOrFallBack) {
    put(u"en.lproj/One.strings"_qs, "\"key\" = \"text\"; \"empty\" = \"\";");
    put(u"xx.lproj/One.strings"_qs, "\"key\" = \"a language that nobody prefers\";");
    EXPECT_EQ(bundle->localizedString(u"key"_qs, u"fallback"_qs, u"One"_qs), u"text"_qs);
    EXPECT_EQ(bundle->localizedString(u"empty"_qs, u"fallback"_qs, u"One"_qs), u""_qs);
    EXPECT_EQ(bundle->localizedString(u"missing"_qs, u"fallback"_qs, u"One"_qs), u"fallback"_qs);
    EXPECT_EQ(bundle->localizedString(u"key"_qs, u"fallback"_qs, u"Two"_qs), u"fallback"_qs);
    EXPECT_TRUE(bundle->localizedString(u"key"_qs, QString(), u"Two"_qs).isNull());
}

TEST_F(BundleTest, ADrawingIsRenderedForEachRatioAtTheSameSizeInPoints) {
    put(u"icon.svg"_qs, "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"10\">"
                        "<rect width=\"10\" height=\"10\" fill=\"#ff0000\"/></svg>");
    for (const qreal ratio : {1.0, 1.5, 2.0, 3.0}) {
        const QImage image = bundle->image(u"icon"_qs, ratio);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(20, 10)) << ratio;
        EXPECT_EQ(image.devicePixelRatio(), ratio);
        EXPECT_EQ(image.pixelColor(image.width() / 2 - 1, 0), QColor(Qt::red)) << "a sharp edge at " << ratio;
        EXPECT_EQ(image.pixelColor(image.width() / 2, 0).alpha(), 0) << "a sharp edge at " << ratio;
    }
    EXPECT_EQ(bundle->image(u"icon.svg"_qs).size(), QSize(20, 10));
    EXPECT_TRUE(bundle->image(u"icon.png"_qs).isNull());
}

TEST_F(BundleTest, ASharperBitmapServesSharperDisplays) {
    putBitmap(u"both.png"_qs, {16, 16}, Qt::red);
    putBitmap(u"both@2x.png"_qs, {32, 32}, Qt::blue);
    putBitmap(u"plain.png"_qs, {16, 16}, Qt::red);
    putBitmap(u"sharp@2x.png"_qs, {32, 32}, Qt::blue);
    struct Case {
        const char *name;
        qreal ratio;
        QColor colour;
    };
    for (const auto &[name, ratio, colour] :
         {Case{"both", 1, Qt::red}, Case{"both.png", 2, Qt::blue}, Case{"both", 1.5, Qt::blue},
          Case{"plain", 2, Qt::red}, Case{"sharp", 1, Qt::blue}, Case{"sharp", 2, Qt::blue}}) {
        const QImage image = bundle->image(QLatin1String(name), ratio);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(16, 16)) << name << ratio;
        EXPECT_EQ(image.devicePixelRatio(), ratio) << name;
        EXPECT_EQ(image.pixelColor(0, 0), colour) << name << ratio;
    }
}

TEST_F(BundleTest, AnImageThatIsMissingOrBrokenIsNull) {
    expectWarning(u"broken.png cannot be read"_qs);
    put(u"broken.png"_qs, "no image");
    EXPECT_TRUE(bundle->image(u"missing"_qs).isNull());
    EXPECT_TRUE(bundle->image(u"broken"_qs).isNull());
    EXPECT_TRUE(bundle->image(QString()).isNull());
}

TEST_F(BundleTest, AnInterfaceIsBuiltAnewEachTime) {
    put(u"Sheet.ui"_qs,
        "<ui version=\"4.0\"><class>Sheet</class><widget class=\"QWidget\" name=\"sheet\">"
        "<widget class=\"QLabel\" name=\"title\"><property name=\"text\"><string>Hi</string></property>"
        "</widget></widget></ui>");
    const auto first = bundle->loadInterface(u"Sheet"_qs);
    const auto second = bundle->loadInterface(u"Sheet"_qs);
    ASSERT_TRUE(first && second);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->parent(), nullptr);
    auto *title = second->findChild<QLabel *>(u"title"_qs);
    ASSERT_TRUE(title);
    EXPECT_EQ(title->text(), u"Hi"_qs);
    EXPECT_EQ(bundle->pathForResource(u"Sheet.ui"_qs), folder.filePath(u"Sheet.ui"_qs));
}

TEST_F(BundleTest, AMissingOrMalformedInterfaceIsNone) {
    expectWarning(u"interface description"_qs);
    put(u"Cut.ui"_qs, "<ui version=\"4.0\"><widget class=\"QWidget\" name=\"w\">");
    put(u"Other.ui"_qs, "<html/>");
    put(u"Empty.ui"_qs, "");
    for (const char *name : {"Cut", "Other", "Empty", "Missing"})
        EXPECT_EQ(bundle->loadInterface(QLatin1String(name)), nullptr) << name;
    EXPECT_TRUE(bundle->pathForResource(u"Missing.ui"_qs).isNull());
}

} // namespace
