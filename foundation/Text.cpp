#include "foundation/Text.h"

namespace tavrin {
inline namespace foundation {
namespace Str {

String escapeFilename(const String& text) {
    static constexpr std::u16string_view kForbidden = u"<>:\"/\\|?*";
    std::u16string name(text.view());
    for (char16_t& unit : name) {
        if (unit < 0x20 || unit == 0x7F || kForbidden.find(unit) != kForbidden.npos) {
            unit = u'_';
        }
    }
    if (name.empty()) {
        return "_";
    }
    for (auto last = name.rbegin(); last != name.rend() && (*last == u'.' || *last == u' ');
         ++last) {
        *last = u'_';
    }
    return name;
}

String escapeControls(const String& text) {
    std::u16string shown(text.view());
    for (char16_t& unit : shown) {
        if ((unit < 0x20 && unit != u'\n') || (unit >= 0x7F && unit < 0xA0)) {
            unit = u'?';
        }
    }
    return shown;
}

String toLowerCase(const String& text) {
    std::u16string lower(text.view());
    for (char16_t& unit : lower) {
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit - u'A' + u'a');
        }
    }
    return lower;
}

}  // namespace Str
}  // namespace foundation
}  // namespace tavrin
