#include <qvcore/TUUID.h>

#include <algorithm>
#include <string>
#include <string_view>

#include <boost/uuid/string_generator.hpp>
#include <boost/uuid/uuid.hpp>
#include <boost/uuid/uuid_io.hpp>

#include <qvsys/QuorvelException.h>

#include "TextIntegers.h"

namespace {

constexpr std::size_t kLength = 36;

bool IsDashPosition(std::size_t position) {
    return position == 8 || position == 13 || position == 18 || position == 23;
}

// The generator takes braces and leaves dashes out of account where it likes, hence this check before.
bool HasLayout(std::u16string_view text) {
    if (text.size() != kLength) {
        return false;
    }
    for (std::size_t i = 0; i < kLength; ++i) {
        if (IsDashPosition(i) ? text[i] != u'-' : qvcore::detail::DigitValue(text[i]) >= 16) {
            return false;
        }
    }
    return true;
}

}  // namespace

TUUID::TUUID(const TString& text) {
    if (!HasLayout(text)) {
        throw QuorvelException(u"Malformed UUID: " + text);
    }
    const std::string characters = text.ToUtf8();
    const boost::uuids::uuid uuid = boost::uuids::string_generator()(characters.begin(), characters.end());
    std::copy(uuid.begin(), uuid.end(), m_bytes.begin());
}

TString TUUID::ToString(int format) const {
    if (format != 0) {
        throw QuorvelException(u"Unknown UUID format: " + TString::number(format));
    }
    boost::uuids::uuid uuid;
    std::copy(m_bytes.begin(), m_bytes.end(), uuid.begin());
    return TString::FromUtf8(boost::uuids::to_string(uuid));
}
