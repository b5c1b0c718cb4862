// A text that has been read, before bags are made of it. Included by DirectReader.h.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include <qvsys/RefCntPtr.h>

#include <qvcore/TString.h>

#include <qvpreslayer/IParameter.h>

// A piece of the text, followed by what is inside it.
struct DirectItem {
    enum class Kind : unsigned char {
        Null,  // a member or entry that is null
        Value,
        Leaf,    // a bag whose members follow: values alone, ascending by identifier
        Bag,     // a bag whose members follow
        Bags,    // its elements follow, each a bag
        BagMap,  // its entries follow, each a bag or Null, in the order of their keys
    };

    int id;  // of a member; of an entry where its key stands; 0 for elements
    Kind kind;
    union {
        IParameter* value;       // of Kind::Value: with a reference, null once it has been taken
        std::uint64_t children;  // of the kinds behind it: how many are right inside
    };

    bool IsBag() const noexcept { return kind == Kind::Leaf || kind == Kind::Bag; }
    std::uint64_t Children() const noexcept { return kind <= Kind::Value ? 0 : children; }
};

static_assert(sizeof(DirectItem) == 16 && std::is_trivially_copyable_v<DirectItem>);

// The items in the order of the text. Holds a reference to each value until it is taken.
class DirectItems {
public:
    DirectItems() = default;
    DirectItems(const DirectItems&) = delete;
    DirectItems& operator=(const DirectItems&) = delete;
    ~DirectItems() { Clear(); }

    std::size_t Size() const noexcept { return static_cast<std::size_t>(m_end - m_items.data()); }
    DirectItem& operator[](std::size_t position) noexcept { return m_items[position]; }
    const DirectItem& operator[](std::size_t position) const noexcept { return m_items[position]; }

    // An item that is null until it is said to be something else.
    std::size_t Add(int id) {
        MakeRoom();
        *m_end++ = {id, DirectItem::Kind::Null, {nullptr}};
        return Size() - 1;
    }
    void Add(int id, RefCntPtr<IParameter> value) {
        MakeRoom();
        *m_end++ = {id, DirectItem::Kind::Value, {value.Detach()}};
    }

    // A value in a holder of the library's own, which is made of arguments and has shared itself with nobody. Room
    // comes first, so that nothing can fail when the value is there.
    template <class Holder, class... Arguments>
    void AddValue(int id, Arguments&&... arguments) {
        MakeRoom();
        auto* const held = new Holder(std::forward<Arguments>(arguments)...);
        held->SetRefCountToOne();
        *m_end++ = {id, DirectItem::Kind::Value, {held}};
    }
    void SetInside(std::size_t position, DirectItem::Kind kind, std::uint64_t children) noexcept {
        m_items[position].kind = kind;
        m_items[position].children = children;
    }

    // The keys of entries, and where one of them stands.
    int AddKey(std::u16string_view key) {
        m_keys.emplace_back(key);
        return static_cast<int>(m_keys.size() - 1);
    }
    TString& Key(int position) noexcept { return m_keys[static_cast<std::size_t>(position)]; }

    // The item behind one and all that is inside it.
    std::size_t Behind(std::size_t position) const noexcept {
        for (std::size_t left = 1; left != 0; --left) {
            left += m_items[position++].Children();
        }
        return position;
    }

    // Every value has been taken: there is nothing left to let go of.
    void SetTaken() noexcept { m_end = m_items.data(); }

    void Clear() noexcept {
        if (m_end != m_items.data()) {
            LetGo();
        }
        m_keys.clear();
    }

    // Lets go of memory beyond what most texts take. Requires: Clear() comes first.
    void Shrink() noexcept {
        if (m_limit - m_end > kKeptItems || m_keys.capacity() > kKeptKeys) [[unlikely]] {
            std::vector<DirectItem>().swap(m_items);
            m_end = nullptr;
            m_limit = nullptr;
            std::vector<TString>().swap(m_keys);
        }
    }

private:
    // For one more item.
    void MakeRoom() {
        if (m_end == m_limit) [[unlikely]] {
            Grow();
        }
    }
    [[gnu::noinline]] void LetGo() noexcept {
        for (const DirectItem& item : std::span(m_items.data(), m_end)) {
            if (item.kind == DirectItem::Kind::Value && item.value != nullptr) {
                item.value->RemoveReference();
            }
        }
        m_end = m_items.data();
    }
    [[gnu::noinline]] void Grow() {
        const std::size_t size = Size();
        m_items.resize(2 * size + kFirstItems);
        m_end = m_items.data() + size;
        m_limit = m_items.data() + m_items.size();
    }

    static constexpr std::size_t kFirstItems = 64;
    static constexpr std::ptrdiff_t kKeptItems = 65536;
    static constexpr std::size_t kKeptKeys = 32768;

    std::vector<DirectItem> m_items;  // those before m_end are the text's
    DirectItem* m_end = nullptr;
    DirectItem* m_limit = nullptr;
    std::vector<TString> m_keys;  // of entries of structure maps
};
