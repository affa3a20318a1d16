// The pieces of HTML that the invitation in a body is written with and found again by.
#pragma once

#include "platform/Literals.h"

#include <QString>

// The two empty anchors around the invitation, as they are written; as the host leaves them when it strips
// quotes; and as they are in a body that was made with the invitation in it.
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
