// Where the plug-in's own files are.
#pragma once

#include <QString>

class vlCommon {
public:
    // The folder below the user's Documents; it may not exist yet.
    [[nodiscard]] static QString getDocumentOutlookPluginRootPath();
    // Makes that folder when it is missing.
    static void createDocumentOutlookPluginRootPath();
    // The loaded profile's user id; null without a profile.
    [[nodiscard]] static QString getUID();
    // The file of the settings that this user last confirmed; "" for no user.
    [[nodiscard]] static QString getVlUserProfilePath(const QString &userId);
};
