// A class overrides an operation when its table of virtual functions holds another function in that operation's place.
// Where the place of an operation in the table is not known (it is for the C++ ABI of the Itanium family, which g++ and
// clang use), no bag is plain.
#include <qvpreslayer/detail/PlainBags.h>

#include <cstddef>
#include <cstring>
#include <optional>

#include <qvpreslayer/BaseParameters.h>

namespace qvpreslayer::detail {

namespace {

// Where the table of virtual functions holds a function, in bytes from its start.
template <class Function>
std::optional<std::ptrdiff_t> PlaceOf([[maybe_unused]] Function function) noexcept {
#if defined(__GXX_ABI_VERSION) && defined(__x86_64__)
    struct {
        std::ptrdiff_t placeAndOne;
        std::ptrdiff_t adjustment;
    } pointer;
    static_assert(sizeof(pointer) == sizeof(function));
    std::memcpy(&pointer, &function, sizeof(pointer));
    return pointer.placeAndOne - 1;
#else
    return std::nullopt;
#endif
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
        const ReferenceBag reference;
        if (m_accept && m_setParameter && m_getParameter) {
            m_acceptFunction = FunctionAt(reference, *m_accept);
            m_setParameterFunction = FunctionAt(reference, *m_setParameter);
            m_getParameterFunction = FunctionAt(reference, *m_getParameter);
        }
    }

    bool AreThoseOf(const IParameters& bag) const noexcept {
        return m_acceptFunction != nullptr && FunctionAt(bag, *m_accept) == m_acceptFunction &&
               FunctionAt(bag, *m_setParameter) == m_setParameterFunction &&
               FunctionAt(bag, *m_getParameter) == m_getParameterFunction;
    }

private:
    std::optional<std::ptrdiff_t> m_accept = PlaceOf(&IParameters::Accept);
    std::optional<std::ptrdiff_t> m_setParameter = PlaceOf(&IParameters::SetParameter);
    std::optional<std::ptrdiff_t> m_getParameter =
        PlaceOf(static_cast<const IParameter& (IParameters::*)(int) const>(&IParameters::GetParameter));
    const void* m_acceptFunction = nullptr;
    const void* m_setParameterFunction = nullptr;
    const void* m_getParameterFunction = nullptr;
};

}  // namespace

// A table that holds both functions of BaseParameters belongs to that part of an object: where the part is not at the
// start, other functions stand there, which find it.
ParameterTable* PlainBags::Find(IParameters& bag) noexcept {
    static const PlainFunctions s_plain;
    return s_plain.AreThoseOf(bag) ? &static_cast<BaseParameters&>(bag).m_parameters : nullptr;
}

}  // namespace qvpreslayer::detail
