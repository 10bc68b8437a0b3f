#include "core/clipboard/ClipHistory.h"

#include <algorithm>

namespace quillmar {

std::optional<std::string> ClipHistory::contentKey(const ClipItem& item)
{
    switch (item.kind) {
    case ClipKind::text:
    case ClipKind::link:
        if (item.text)
            return "t:" + *item.text;
        return std::nullopt;
    case ClipKind::files: {
        if (!item.filePaths || item.filePaths->empty())
            return std::nullopt;
        std::string key = "f:";
        for (const auto& path : *item.filePaths) {
            key += path;
            key += '\0';
        }
        return key;
    }
    case ClipKind::image:
        if (item.imageHash)
            return "i:" + *item.imageHash;
        return std::nullopt;
    }
    return std::nullopt;
}

void ClipHistory::index(const ClipItem& item)
{
    if (auto key = contentKey(item))
        m_byContent.insert_or_assign(std::move(*key), item.id);
}

void ClipHistory::unindex(const ClipItem& item)
{
    auto key = contentKey(item);
    if (!key)
        return;
    auto found = m_byContent.find(*key);
    if (found == m_byContent.end() || found->second != item.id)
        return;
    m_byContent.erase(found);
    if (!m_mayHoldDuplicates)
        return;
    // A history loaded from a file may hold the same content twice; the next one takes over the key.
    for (const auto& other : m_items) {
        if (other.id != item.id && contentKey(other) == key) {
            m_byContent.emplace(std::move(*key), other.id);
            return;
        }
    }
}

std::size_t ClipHistory::position(const std::string& id) const
{
    auto found = std::find_if(m_items.begin(), m_items.end(), [&](const ClipItem& item) { return item.id == id; });
    return static_cast<std::size_t>(found - m_items.begin());
}

void ClipHistory::replaceAll(std::vector<ClipItem> items)
{
    m_items = std::move(items);
    m_byContent.clear();
    m_mayHoldDuplicates = false;
    for (auto item = m_items.rbegin(); item != m_items.rend(); ++item) {
        auto key = contentKey(*item);
        if (!key)
            continue;
        auto [slot, added] = m_byContent.insert_or_assign(std::move(*key), item->id);
        m_mayHoldDuplicates = m_mayHoldDuplicates || !added;
    }
}

ClipHistory::Insertion ClipHistory::insert(ClipItem item)
{
    if (auto existing = idWithContent(item)) {
        auto at = position(*existing);
        auto& kept = m_items[at];
        kept.date = item.date;
        kept.sourceBundleID = std::move(item.sourceBundleID);
        kept.sourceName = std::move(item.sourceName);
        // A link typed again as text, or the reverse, takes the latest reading.
        if (kept.kind == ClipKind::text || kept.kind == ClipKind::link)
            kept.kind = item.kind;
        std::rotate(m_items.begin(), m_items.begin() + static_cast<std::ptrdiff_t>(at),
            m_items.begin() + static_cast<std::ptrdiff_t>(at) + 1);
        return { *existing, true };
    }
    auto id = item.id;
    index(item);
    m_items.insert(m_items.begin(), std::move(item));
    return { std::move(id), false };
}

std::optional<std::string> ClipHistory::idWithContent(const ClipItem& item) const
{
    auto key = contentKey(item);
    if (!key)
        return std::nullopt;
    auto found = m_byContent.find(*key);
    if (found == m_byContent.end())
        return std::nullopt;
    return found->second;
}

const ClipItem* ClipHistory::find(const std::string& id) const
{
    auto at = position(id);
    return at < m_items.size() ? &m_items[at] : nullptr;
}

bool ClipHistory::moveToTop(const std::string& id, WallTime date)
{
    auto at = position(id);
    if (at >= m_items.size())
        return false;
    m_items[at].date = date;
    std::rotate(m_items.begin(), m_items.begin() + static_cast<std::ptrdiff_t>(at),
        m_items.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    return true;
}

bool ClipHistory::setText(const std::string& id, std::string text)
{
    auto at = position(id);
    if (at >= m_items.size())
        return false;
    unindex(m_items[at]);
    m_items[at].text = std::move(text);
    if (auto key = contentKey(m_items[at]); key && m_byContent.contains(*key))
        m_mayHoldDuplicates = true;
    index(m_items[at]);
    return true;
}

std::optional<bool> ClipHistory::togglePin(const std::string& id)
{
    auto at = position(id);
    if (at >= m_items.size())
        return std::nullopt;
    m_items[at].isPinned = !m_items[at].isPinned;
    return m_items[at].isPinned;
}

template<typename Predicate>
std::vector<ClipItem> ClipHistory::removeIf(Predicate predicate)
{
    std::vector<ClipItem> removed;
    std::vector<ClipItem> kept;
    kept.reserve(m_items.size());
    for (auto& item : m_items) {
        if (predicate(item))
            removed.push_back(std::move(item));
        else
            kept.push_back(std::move(item));
    }
    m_items = std::move(kept);
    for (const auto& item : removed)
        unindex(item);
    return removed;
}

std::vector<ClipItem> ClipHistory::trim(std::int64_t limit)
{
    std::int64_t unpinned = 0;
    return removeIf([&](const ClipItem& item) {
        if (item.isPinned)
            return false;
        return ++unpinned > limit;
    });
}

std::vector<ClipItem> ClipHistory::removeOlderThan(WallTime cutoff)
{
    return removeIf([&](const ClipItem& item) { return !item.isPinned && item.date < cutoff; });
}

std::optional<ClipItem> ClipHistory::remove(const std::string& id)
{
    auto at = position(id);
    if (at >= m_items.size())
        return std::nullopt;
    auto item = std::move(m_items[at]);
    m_items.erase(m_items.begin() + static_cast<std::ptrdiff_t>(at));
    unindex(item);
    return item;
}

std::vector<ClipItem> ClipHistory::clear(KeepPinned keepPinned)
{
    return removeIf([&](const ClipItem& item) { return keepPinned == KeepPinned::no || !item.isPinned; });
}

std::set<std::string> ClipHistory::imageFiles() const
{
    std::set<std::string> names;
    for (const auto& item : m_items) {
        if (item.imageFile)
            names.insert(*item.imageFile);
    }
    return names;
}

} // namespace quillmar
