// A class overrides an operation when its table of virtual functions holds another function in that operation's place.
// Where the place of an operation in the table is not known (it is for the C++ ABI of the Itanium family, which g++ and
// clang use), no bag is plain.
#include <qvpreslayer/detail/PlainBags.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include <qvpreslayer/BaseParameters.h>

namespace qvpreslayer::detail {

namespace {

#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
constexpr bool kPlacesAreKnown = true;
#else
constexpr bool kPlacesAreKnown = false;
#endif

// Where the table of virtual functions holds a function, in bytes from its start. The compiler works it out.
template <class Function>
std::ptrdiff_t PlaceOf(Function function) noexcept {
    struct {
        std::ptrdiff_t placeAndOne;
        std::ptrdiff_t adjustment;
    } pointer{};
    static_assert(!kPlacesAreKnown || sizeof(pointer) == sizeof(function));
    std::memcpy(&pointer, &function, std::min(sizeof(pointer), sizeof(function)));
    return pointer.placeAndOne - 1;
}

const void* FunctionAt(const IParameters& bag, std::ptrdiff_t place) noexcept {
    const char* functions = *reinterpret_cast<const char* const*>(&bag);
    const void* function = nullptr;
    std::memcpy(&function, functions + place, sizeof(function));
    return function;
}

class ReferenceBag final : public BaseParameters {
public:
    ReferenceBag() { SetRefCountToOne(); }  // on the stack: never deleted through a pointer
    ~ReferenceBag() override = default;

private:
    RefCntPtr<BaseParameters> DoEmptyClone() override { return {}; }
};

// What stands in the places of a class that overrides none of them.
class PlainFunctions {
public:
    PlainFunctions() noexcept {
        if constexpr (kPlacesAreKnown) {
            const ReferenceBag reference;
            m_accept = AcceptOf(reference);
            m_setParameter = SetParameterOf(reference);
            m_getParameter = GetParameterOf(reference);
        }
    }

    bool AreThoseOf(const IParameters& bag) const noexcept {
        if constexpr (!kPlacesAreKnown) {
            return false;
        }
        return AcceptOf(bag) == m_accept && SetParameterOf(bag) == m_setParameter &&
               GetParameterOf(bag) == m_getParameter;
    }

private:
    static const void* AcceptOf(const IParameters& bag) noexcept {
        return FunctionAt(bag, PlaceOf(&IParameters::Accept));
    }
    static const void* SetParameterOf(const IParameters& bag) noexcept {
        return FunctionAt(bag, PlaceOf(&IParameters::SetParameter));
    }
    static const void* GetParameterOf(const IParameters& bag) noexcept {
        using Get = const IParameter& (IParameters::*)(int) const;
        return FunctionAt(bag, PlaceOf(static_cast<Get>(&IParameters::GetParameter)));
    }

    const void* m_accept = nullptr;
    const void* m_setParameter = nullptr;
    const void* m_getParameter = nullptr;
};

// Apart from those who only look, and need no stack for it.
[[gnu::noinline]] PlainFunctions MakePlainFunctions() noexcept { return PlainFunctions(); }

}  // namespace

// A table that holds both functions of BaseParameters belongs to that part of an object: where the part is not at the
// start, other functions stand there, which find it.
ParameterTable* PlainBags::Find(IParameters& bag) noexcept {
    static const PlainFunctions s_plain = MakePlainFunctions();
    return s_plain.AreThoseOf(bag) ? &static_cast<BaseParameters&>(bag).m_parameters : nullptr;
}

}  // namespace qvpreslayer::detail
