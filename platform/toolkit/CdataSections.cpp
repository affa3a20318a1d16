#include "platform/toolkit/CdataSections.h"

#include <algorithm>
#include <string_view>
#include <strings.h>

namespace platform {

namespace {

constexpr std::string_view opening = "<![CDATA[";
constexpr std::string_view closing = "]]>";
constexpr std::string_view harmless = "<![cdata[";

bool hasAt(std::string_view html, std::size_t at, std::string_view lowerCase) {
    return html.size() - at >= lowerCase.size() &&
           strncasecmp(html.data() + at, lowerCase.data(), lowerCase.size()) == 0;
}

void appendEscaped(std::string &out, std::string_view text) {
    for (const char c : text) {
        if (c == '<')
            out += "&lt;";
        else if (c == '&')
            out += "&amp;";
        else
            out += c;
    }
}

} // namespace

std::string withoutCdataSections(std::string html) {
    if (html.find(opening) == std::string::npos)
        return html;
    const std::string_view all = html;
    std::string out;
    std::size_t copied = 0;
    bool foreign = false;
    for (std::size_t at = all.find('<'); at != std::string_view::npos; at = all.find('<', at + 1)) {
        if (hasAt(all, at, "<svg") || hasAt(all, at, "<math"))
            foreign = true;
        else if (hasAt(all, at, "</svg") || hasAt(all, at, "</math"))
            foreign = false;
        if (!all.substr(at).starts_with(opening))
            continue;
        out += all.substr(copied, at - copied);
        copied = at + opening.size();
        if (!foreign) {
            out += harmless;
            continue;
        }
        const std::size_t end = std::min(all.find(closing, copied), all.size());
        appendEscaped(out, all.substr(copied, end - copied));
        copied = std::min(end + closing.size(), all.size());
        at = copied - 1;
    }
    out += all.substr(copied);
    return out;
}

} // namespace platform
