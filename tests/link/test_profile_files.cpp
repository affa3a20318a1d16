// The user's profile and the files that the link keeps.
#include "plugin/link/discovery/vlGetClientVersionHelper.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/util/vlOLUtils.h"
#include "tests/link/LinkFixture.h"

#include <QDir>

namespace {

class Profile : public LinkTest {
protected:
    vlUserProfileHelper &helper = vlUserProfileHelper::sharedInstance();
};

} // namespace

TEST_F(Profile, AnotherUserIsAChangeOfAccountEvenAcrossAClearing) {
    const auto signIn = [this](const QVariantMap &profile) {
        helper.setUserProfile(profile);
        return helper.isAccountChanged();
    };
    EXPECT_FALSE(signIn({{"userId", "u1"}, {"email", "a@x"}}));
    EXPECT_FALSE(signIn({{"userId", "u1"}}));
    EXPECT_TRUE(helper.getEmail().isNull()); // replaced, not merged
    EXPECT_FALSE(signIn({{"email", "nobody"}}));
    helper.clearUserProfile();
    EXPECT_FALSE(helper.hasUserProfile());
    EXPECT_TRUE(signIn({{"userId", "u2"}}));
    EXPECT_TRUE(signIn({{"userId", "u2"}})); // stays set until it is cleared
    helper.setAccountChangedFlag(false);
    EXPECT_FALSE(signIn({{"userId", "u2"}}));
    helper.setUserProfile(rt::Value());
    helper.setUserProfile(rt::nullMarker());
    EXPECT_EQ(helper.getUID(), "u2");
}

TEST_F(Profile, EachUserHasAFileBelowTheRootFolder) {
    const QString root = client.filePath("Documents/ParloMeetingsOutlookPlugin");
    EXPECT_EQ(vlCommon::getDocumentOutlookPluginRootPath(), root);
    EXPECT_EQ(vlCommon::getVlUserProfilePath("u1"), root + "/u1.txt");
    EXPECT_EQ(vlCommon::getVlUserProfilePath(QString()), "");
    const QString odd = vlCommon::getVlUserProfilePath("../../escape");
    EXPECT_EQ(QDir::cleanPath(odd), odd);
    EXPECT_EQ(odd.lastIndexOf(u'/'), root.size());
}

TEST_F(Profile, AWriterOfTheSiteConfigurationChangesOnlyItsOwnMember) {
    const QString path = client.filePath("Documents/ParloMeetingsOutlookPlugin/vlConfig.txt");
    const auto written = [&path] { return vlOLUtils::toNSDictionary(vlOLUtils::readStrFromFile(path)); };
    vlMeetingCommon::savePACConfigToLocal(2);
    vlOLUtils::saveStrToFile("{\"enablePAC\": true", path); // it cannot be parsed
    EXPECT_FALSE(vlGetPACHelper::sharedInstance().isPACEnabled());
    vlGetClientVersionHelper::saveClientVersionToLocal("3.7.1");
    EXPECT_EQ(written(), (QVariantMap{{"velaClientVersion", "3.7.1"}}));
    vlOLUtils::saveStrToFile(R"({"other": [1], "velaClientVersion": "3.7.1"})", path);
    vlMeetingCommon::savePACConfigToLocal(2);
    EXPECT_TRUE(vlGetPACHelper::sharedInstance().isPACEnabled());
    EXPECT_EQ(written(),
              (QVariantMap{
                  {"other", QVariantList{qint64(1)}}, {"enablePAC", true}, {"velaClientVersion", "3.7.1"}}));
}
