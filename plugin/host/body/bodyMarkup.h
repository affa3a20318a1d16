// The pieces of HTML that the invitation in a body is written with and found again by.
#pragma once

#include <QString>

// The two empty anchors around the invitation, as they are written; as the host leaves them when it strips
// quotes; and as they are in a body that was made with the invitation in it.
inline const QString kvl_BeginBookmark = QStringLiteral("<a name=\"MacVlBookmarkBegin\"></a>");
inline const QString kvl_EndBookmark = QStringLiteral("<a name=\"MacVlBookmarkEnd\"></a>");
inline const QString kvl_BeginBookmarkEx = QStringLiteral("<a name=MacVlBookmarkBegin></a>");
inline const QString kvl_EndBookmarkEx = QStringLiteral("<a name=MacVlBookmarkEnd></a>");
inline const QString kvl_InitBeginBookMark = QStringLiteral("<br><br>+<a name=\"MacVlBookmarkBegin\"></a>");
inline const QString kvl_InitEndBookMark = QStringLiteral("<a name=\"MacVlBookmarkEnd\"></a>.<br><br>");

inline const QString HTML_NBSP_TAG = QStringLiteral("&nbsp;");
inline const QString HTTP_TAG = QStringLiteral("http://");
inline const QString HTTPS_TAG = QStringLiteral("https://");
inline const QString lineBreakTag = QStringLiteral("<br>");
inline const QString blockMargin = QStringLiteral("<br><br>"); // around a plain invitation
inline const QString bodyEndTag = QStringLiteral("</body>");
