#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/clipboard/ClipItem.h"

namespace quillmar {

enum class KeepPinned { no, yes };

// The history's items, newest first, with the rules that shape them: one item per content, trimming and
// expiry that never touch pinned items. Knows nothing of files or time sources; the store drives it.
//
// The same content is the same text, the same list of file paths (in order) or the same image hash. A
// repeated copy does not add an item: the existing one moves to the top with the new date and source,
// keeping its id, its pin and its image file. Lookups go through a content index, so a copy costs the
// same however long the history is.
class ClipHistory final {
public:
    const std::vector<ClipItem>& items() const { return m_items; }

    // Replaces everything (after loading); rebuilds the index, the newest of equal items indexed.
    void replaceAll(std::vector<ClipItem> items);

    struct Insertion {
        std::string id;   // of the item now on top
        bool merged;      // an existing item took the copy
    };
    Insertion insert(ClipItem item);

    // The id of the item with the same content as `item`, if any.
    std::optional<std::string> idWithContent(const ClipItem& item) const;

    const ClipItem* find(const std::string& id) const;

    // Moves the item to the top and sets its date; false for an unknown id.
    bool moveToTop(const std::string& id, WallTime date);

    // Replaces a text or link item's text (the content index follows); false for an unknown id.
    bool setText(const std::string& id, std::string text);

    // Flips the pin; the new state, or none for an unknown id.
    std::optional<bool> togglePin(const std::string& id);

    // Walks newest first: pinned items are kept and not counted, unpinned ones kept until `limit` of them
    // are; the rest are removed and returned.
    std::vector<ClipItem> trim(std::int64_t limit);

    // Removes and returns unpinned items dated before `cutoff`.
    std::vector<ClipItem> removeOlderThan(WallTime cutoff);

    std::optional<ClipItem> remove(const std::string& id);

    std::vector<ClipItem> clear(KeepPinned keepPinned);

    // The image file names that items name.
    std::set<std::string> imageFiles() const;

    // The content index key: "t:" text, "f:" paths, "i:" image hash; none for an item without content.
    static std::optional<std::string> contentKey(const ClipItem& item);

private:
    template<typename Predicate>
    std::vector<ClipItem> removeIf(Predicate predicate);
    void unindex(const ClipItem& item);
    void index(const ClipItem& item);
    std::size_t position(const std::string& id) const;

    std::vector<ClipItem> m_items;
    std::unordered_map<std::string, std::string> m_byContent; // content key to id
    // Set when two items may share content (only a loaded file or an edited text can cause it); until
    // then, removing an item never has to look for another holder of its key.
    bool m_mayHoldDuplicates = false;
};

} // namespace quillmar
