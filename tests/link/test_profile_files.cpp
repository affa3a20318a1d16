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

class SiteConfiguration : public LinkTest {
protected:
    void holds(const QString &text) {
        QDir().mkpath(vlCommon::getDocumentOutlookPluginRootPath());
        vlOLUtils::saveStrToFile(text, vlMeetingCommon::getLocalVlSiteConfigPath());
    }
    QVariantMap members() const { return vlOLUtils::toArrayOrNSDictionary(siteConfigText()).toMap(); }
};

} // namespace

TEST_F(Profile, AnswersNothingUntilThereIsOne) {
    EXPECT_FALSE(helper.hasUserProfile());
    for (const QString &text :
         {helper.getEmail(), helper.getAccountName(), helper.getUID(), helper.getSnsId(),
          helper.roomMeetingID(), helper.thirdPartyAudioInfo(), vlCommon::getUID()})
        EXPECT_TRUE(text.isNull());
    EXPECT_FALSE(helper.getSnsType().isValid() || helper.bossesInfo().isValid() ||
                 helper.myTelephonyInfo().isValid());
    EXPECT_FALSE(helper.hasSelfTelephony() || helper.enablePSTN() || helper.enableThirdPartyAudio());
    EXPECT_EQ(helper.userOption(), 0);
}

TEST_F(Profile, AnswersWhatTheClientTold) {
    helper.setUserProfile(QVariantMap{{"email", "a@x"},
                                      {"accountName", "A"},
                                      {"userId", "u1"},
                                      {"snsId", "s"},
                                      {"snsType", qint64(100)},
                                      {"hasSelfTelephony", true},
                                      {"enableThirdPartyAudio", qint64(1)},
                                      {"enablePSTN", "YES"},
                                      {"myTelephonInfo", QVariantList{"t"}},
                                      {"roomMeetingId", "1234567890"},
                                      {"thirdPartyAudio", "dial"},
                                      {"bosses", QVariantList{"b"}},
                                      {"use3rdPartyAsDefaultAudio", true},
                                      {"useRandomPasswordByDefault", true},
                                      {"userOption", std::numeric_limits<qint64>::min()}});
    EXPECT_EQ(helper.getEmail(), "a@x");
    EXPECT_EQ(helper.getAccountName(), "A");
    EXPECT_EQ(vlCommon::getUID(), "u1");
    EXPECT_EQ(helper.getSnsId(), "s");
    EXPECT_EQ(helper.getSnsType(), qint64(100));
    EXPECT_EQ(helper.myTelephonyInfo(), QVariantList{"t"});
    EXPECT_EQ(helper.roomMeetingID(), "1234567890");
    EXPECT_EQ(helper.thirdPartyAudioInfo(), "dial");
    EXPECT_EQ(helper.bossesInfo(), QVariantList{"b"});
    EXPECT_TRUE(helper.hasSelfTelephony() && helper.enableThirdPartyAudio() && helper.enablePSTN());
    EXPECT_TRUE(helper.use3rdPartyAsDefaultAudio() && helper.useRandomPasswordByDefault());
    EXPECT_EQ(helper.userOption(), std::numeric_limits<qint64>::min());
    EXPECT_FALSE(helper.alwaysUseBothAsDefaultAudio() || helper.alwaysEnableJoinBeforeHostByDefault());
}

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
    EXPECT_TRUE(signIn({{"userId", "u2"}})); // stays until it is taken down
    helper.setAccountChangedFlag(false);
    EXPECT_FALSE(signIn({{"userId", "u2"}}));
    helper.setUserProfile(rt::Value());
    helper.setUserProfile(rt::nullMarker());
    EXPECT_EQ(helper.getUID(), "u2");
}

TEST_F(Profile, EachUserHasAFileBelowTheRootFolder) {
    const QString root = folder.filePath("Documents/ParloMeetingsOutlookPlugin");
    EXPECT_EQ(vlCommon::getDocumentOutlookPluginRootPath(), root);
    EXPECT_EQ(vlCommon::getVlUserProfilePath("u1"), root + "/u1.txt");
    EXPECT_TRUE(vlCommon::getVlUserProfilePath(QString()).isEmpty());
    EXPECT_FALSE(vlCommon::getVlUserProfilePath(QString()).isNull());
    const QString odd = vlCommon::getVlUserProfilePath("../../escape");
    EXPECT_EQ(QDir::cleanPath(odd), odd);
    EXPECT_EQ(odd.lastIndexOf(u'/'), root.size());
}

TEST_F(SiteConfiguration, AWriterChangesOnlyItsOwnMember) {
    EXPECT_EQ(vlMeetingCommon::getLocalVlSiteConfigPath(),
              folder.filePath("Documents/ParloMeetingsOutlookPlugin/vlConfig.txt"));
    vlGetClientVersionHelper::saveClientVersionToLocal("3.7.1");
    EXPECT_EQ(members(), (QVariantMap{{"velaClientVersion", "3.7.1"}}));
    vlMeetingCommon::savePACConfigToLocal(0);
    EXPECT_EQ(members(), (QVariantMap{{"velaClientVersion", "3.7.1"}, {"enablePAC", false}}));
    holds(R"({"other": [1], "enablePAC": true, "velaClientVersion": "1"})");
    EXPECT_TRUE(vlGetPACHelper::sharedInstance().isPACEnabled());
    vlGetClientVersionHelper::saveClientVersionToLocal("3.7.2");
    EXPECT_EQ(members(),
              (QVariantMap{
                  {"other", QVariantList{qint64(1)}}, {"enablePAC", true}, {"velaClientVersion", "3.7.2"}}));
}

TEST_F(SiteConfiguration, WhatDoesNotParseIsAnEmptyOneAndIsWrittenAnew) {
    for (const char *text : {"", "{", "[1]", "7", "{\"enablePAC\": true"}) {
        holds(text);
        EXPECT_FALSE(vlGetPACHelper::sharedInstance().isPACEnabled()) << text;
        EXPECT_FALSE(vlMeetingCommon::siteConfigMember("velaClientVersion").isValid());
        vlGetClientVersionHelper::saveClientVersionToLocal("3.7.1");
        EXPECT_EQ(members(), (QVariantMap{{"velaClientVersion", "3.7.1"}})) << text;
    }
}
