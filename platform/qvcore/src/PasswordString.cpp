#include <qvcore/PasswordString.h>

#include <cstring>
#include <utility>

namespace {

// Overwrites the text in a way that no optimiser removes.
void Wipe(TString& text) noexcept { explicit_bzero(text.mutable_data(), text.size() * sizeof(char16_t)); }

}  // namespace

const TString PasswordString::s_Mask(u"********");

PasswordString::PasswordString(const TString& password) : m_password(password) {}

PasswordString::PasswordString(const PasswordString& other) = default;

PasswordString& PasswordString::operator=(const PasswordString& other) {
    if (this != &other) {
        // Room is made first, so that the rest cannot fail, and growing never moves a password about: an empty text is
        // moved in, and the old storage goes wiped.
        TString room;
        if (other.m_password.size() > m_password.capacity()) {
            room.reserve(other.m_password.size());
        }
        Wipe(m_password);
        if (other.m_password.size() > m_password.capacity()) {
            m_password = std::move(room);
        }
        m_password.clear();
        m_password.append(other.m_password);
    }
    return *this;
}

PasswordString::~PasswordString() { Wipe(m_password); }
