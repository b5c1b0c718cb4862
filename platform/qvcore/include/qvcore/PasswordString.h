// A text that never shows itself.
//
// Exceptions: strong: a password that cannot be overwritten stays as it was.
#pragma once

#include <qvcore/Export.h>
#include <qvcore/TString.h>

// Holds a password. It has no text form but the mask; only Reveal answers the password itself. Its storage is wiped
// when it is destroyed or overwritten.
class QVCORE_API PasswordString {
public:
    PasswordString() = default;
    explicit PasswordString(const TString& password);
    PasswordString(const PasswordString& other);
    PasswordString& operator=(const PasswordString& other);
    ~PasswordString();

    // The password. Valid until the object changes; copies of the text are the caller's to wipe.
    const TString& Reveal() const noexcept { return m_password; }

    // What stands for every password in texts: eight asterisks, whatever the password's length.
    static const TString s_Mask;

    friend bool operator==(const PasswordString&, const PasswordString&) = default;

private:
    TString m_password;
};
