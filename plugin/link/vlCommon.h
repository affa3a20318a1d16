// The paths of the plug-in's own files.
#pragma once

#include <QString>

class vlCommon {
public:
    // The folder below the user's Documents; it may not exist yet.
    [[nodiscard]] static QString getDocumentOutlookPluginRootPath();
    // Creates that folder if it does not exist.
    static void createDocumentOutlookPluginRootPath();
    // The user id of the loaded profile; null without a profile.
    [[nodiscard]] static QString getUID();
    // The file with the settings that this user last confirmed; "" without a user.
    [[nodiscard]] static QString getVlUserProfilePath(const QString &userId);
};
