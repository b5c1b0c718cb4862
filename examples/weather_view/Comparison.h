// Compares two bags value by value.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include <qvpreslayer/qvpreslayer.h>

#include "WeatherTable.h"

namespace weather {

// Says where a bag that was read differs from the one that was written. Lists and columns are compared element by
// element, numbers exactly.
//
// Two things do not come back by design and are expected so: unserializable parameters are absent, and a password is
// its mask.
class Comparison {
public:
    Comparison(const IParameters& written, const IParameters& read);

    // One line for each difference, such as "/style/font: "Serif" came back as "Sans""; empty when the bags are equal.
    const std::vector<TString>& GetDifferences() const noexcept { return m_differences; }

    // How many single values were looked at.
    std::size_t GetValueCount() const noexcept { return m_valueCount; }

private:
    void CompareBags(const TString& path, const IParameters& written, const IParameters& read);
    void CompareParameters(const TString& path, const IParameter& written, const IParameter& read);

    // Compares when written holds one or many of the types, and answers whether it does.
    template <class... Types>
    bool CompareAsOneOf(const TString& path, const IParameter& written, const IParameter& read);
    template <class T>
    bool CompareAs(const TString& path, const IParameter& written, const IParameter& read);

    // The values themselves.
    template <class T>
    void Compare(const TString& path, const T& written, const T& read);
    template <class T>
    void Compare(const TString& path, const std::vector<T>& written, const std::vector<T>& read);
    template <class T>
    void Compare(const TString& path, const std::map<TString, T>& written, const std::map<TString, T>& read);
    // Equal values may differ in collation, precision and scale; their texts tell.
    void Compare(const TString& path, const DataValue& written, const DataValue& read);
    void Compare(const TString& path, const PasswordString& written, const PasswordString& read);
    void Compare(const TString& path, const RefCntPtr<const IParameters>& written,
                 const RefCntPtr<const IParameters>& read);
    void Compare(const TString& path, const RefCntPtr<const PresentationModel>& written,
                 const RefCntPtr<const PresentationModel>& read);
    void Compare(const TString& path, const WeatherTable& written, const WeatherTable& read);

    void Differ(const TString& path, const TString& how);

    std::vector<TString> m_differences;
    std::size_t m_valueCount = 0;
};

}  // namespace weather
