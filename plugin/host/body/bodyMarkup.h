// The HTML fragments with which the plug-in writes an invitation into a body and finds it again.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The two empty anchors around the invitation in three forms: as the plug-in writes them, as the host leaves
// them when it strips quotes, and as they are in a new body that was created with an invitation.
inline const QString kvl_BeginBookmark = u"<a name=\"MacVlBookmarkBegin\"></a>"_s;
inline const QString kvl_EndBookmark = u"<a name=\"MacVlBookmarkEnd\"></a>"_s;
inline const QString kvl_BeginBookmarkEx = u"<a name=MacVlBookmarkBegin></a>"_s;
inline const QString kvl_EndBookmarkEx = u"<a name=MacVlBookmarkEnd></a>"_s;
inline const QString kvl_InitBeginBookMark = u"<br><br>+<a name=\"MacVlBookmarkBegin\"></a>"_s;
inline const QString kvl_InitEndBookMark = u"<a name=\"MacVlBookmarkEnd\"></a>.<br><br>"_s;

inline const QString HTML_NBSP_TAG = u"&nbsp;"_s;
inline const QString HTTP_TAG = u"http://"_s;
inline const QString HTTPS_TAG = u"https://"_s;
inline const QString lineBreakTag = u"<br>"_s;
inline const QString blockMargin = u"<br><br>"_s; // around a plain invitation
inline const QString bodyEndTag = u"</body>"_s;
