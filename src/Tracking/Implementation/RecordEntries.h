#ifndef Orrelin_Tracking_Implementation_RecordEntries_h
#define Orrelin_Tracking_Implementation_RecordEntries_h

#include <algorithm>
#include <cstdint>
#include <vector>
#include <Corrade/Containers/ArrayView.h>

namespace OrrelinEngine { namespace Tracking {

/* Entries of a record, in the order of its file. They are mostly searched in
   that same order, so the one behind the last one found is tried first. The
   others are found in a sorted copy, which is only made when it's needed.

   An entry has an id() and can be compared; those with one id sort together. */
template<class Entry> class RecordEntries {
public:
    void add(const Entry& entry) { _entries.push_back(entry); }

    bool isEmpty() const { return _entries.empty(); }
    auto begin() const { return _entries.begin(); }
    auto end() const { return _entries.end(); }

    bool contains(const Entry& entry) const {
        if(_next < _entries.size() && _entries[_next] == entry) {
            ++_next;
            return true;
        }
        const std::vector<Entry>& all = sorted();
        if(!std::binary_search(all.begin(), all.end(), entry))
            return false;
        skip(entry.id());
        return true;
    }

    /* One with an id, or null */
    const Entry* find(std::uint64_t id) const {
        if(_next < _entries.size() && _entries[_next].id() == id)
            return &_entries[_next++];
        const std::vector<Entry>& all = sorted();
        const auto found = std::lower_bound(all.begin(), all.end(), id,
            [](const Entry& entry, std::uint64_t i) { return entry.id() < i; });
        if(found == all.end() || found->id() != id)
            return nullptr;
        skip(id);
        return &*found;
    }

    /* Those with an id in a range that includes its ends */
    Containers::ArrayView<const Entry> range(
        std::uint64_t first, std::uint64_t last) const {
        const std::vector<Entry>& all = sorted();
        const auto isBefore = [](const Entry& entry, std::uint64_t id) {
            return entry.id() < id;
        };
        const auto begin =
            std::lower_bound(all.begin(), all.end(), first, isBefore);
        const auto end = std::lower_bound(begin, all.end(), last + 1, isBefore);
        return {all.data() + (begin - all.begin()), std::size_t(end - begin)};
    }

private:
    /* The search goes on behind an entry that was nearly the next one */
    void skip(std::uint64_t id) const {
        const std::size_t end = std::min(_entries.size(), _next + 8);
        for(std::size_t i = _next; i < end; ++i)
            if(_entries[i].id() == id) {
                _next = i + 1;
                return;
            }
    }

    const std::vector<Entry>& sorted() const {
        if(_sorted.size() != _entries.size()) {
            _sorted = _entries;
            std::sort(_sorted.begin(), _sorted.end());
        }
        return _sorted;
    }

    std::vector<Entry> _entries;
    mutable std::vector<Entry> _sorted;
    mutable std::size_t _next = 0;
};

/* The hash of the text that a key had in the default language's file */
struct SourceEntry {
    std::uint64_t key, text;

    std::uint64_t id() const { return key; }
    bool operator==(const SourceEntry& other) const {
        return key == other.key && text == other.text;
    }
    bool operator<(const SourceEntry& other) const {
        return key != other.key ? key < other.key : text < other.text;
    }
};

/* A translation, with the short hash of the source that it was made from, in
   one number, as there are millions. Without a translation, the source is 0. */
struct TranslationEntry {
    std::uint64_t bits;

    explicit TranslationEntry(std::uint64_t translation, std::uint32_t source):
        bits{translation << 24 | source} {}

    std::uint64_t id() const { return bits >> 24; }
    std::uint32_t source() const { return bits & 0xffffff; }
    bool operator==(const TranslationEntry& other) const {
        return bits == other.bits;
    }
    bool operator<(const TranslationEntry& other) const {
        return bits < other.bits;
    }
};

}}

#endif
