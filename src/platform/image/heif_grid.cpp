#include "platform/image/heif_grid.h"

#include "platform/error.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <map>
#include <span>
#include <utility>

namespace veldara {

namespace {

constexpr std::uint32_t kindOf(const char (&name)[5]) {
    std::uint32_t kind = 0;
    for (int i = 0; i < 4; ++i) {
        kind = kind << 8 | static_cast<std::uint8_t>(name[i]);
    }
    return kind;
}

using Bytes = std::span<const std::uint8_t>;

// Reads one number after the other; after the end only zeros, and good() says so.
class Numbers {
  public:
    explicit Numbers(Bytes bytes) : bytes_(bytes) {}

    bool good() const { return good_; }
    bool atEnd() const { return at_ == bytes_.size(); }
    std::size_t at() const { return at_; }

    std::uint64_t next(std::size_t size) {
        std::uint64_t value = 0;
        for (const std::uint8_t byte : take(size)) {
            value = value << 8 | byte;
        }
        return value;
    }
    std::uint8_t byte() { return static_cast<std::uint8_t>(next(1)); }
    std::uint32_t word() { return static_cast<std::uint32_t>(next(4)); }

    // Of an item, whose numbers have two bytes in the older versions of a box.
    std::uint32_t item(bool wide) { return static_cast<std::uint32_t>(next(wide ? 4 : 2)); }

    Bytes take(std::size_t size) {
        if (size > bytes_.size() - at_) {
            good_ = false;
            at_ = bytes_.size();
            return {};
        }
        const Bytes taken = bytes_.subspan(at_, size);
        at_ += size;
        return taken;
    }

  private:
    Bytes bytes_;
    std::size_t at_ = 0;
    bool good_ = true;
};

struct Box {
    std::uint32_t kind = 0;
    Bytes content;
    std::uint64_t at = 0; // of the content, in the file
};

// The box at the place that was reached, in bytes that begin there in the file. A box that says no
// size reaches to the end.
Box nextBox(Numbers& numbers, std::uint64_t bytesAt, std::size_t bytesSize) {
    const std::size_t start = numbers.at();
    std::uint64_t size = numbers.word();
    Box box;
    box.kind = numbers.word();
    if (size == 1) {
        size = numbers.next(8);
    } else if (size == 0) {
        size = bytesSize - start;
    }
    const std::size_t head = numbers.at() - start;
    box.at = bytesAt + numbers.at();
    box.content =
        numbers.take(size >= head ? static_cast<std::size_t>(size - head) : bytesSize + 1);
    return box;
}

template <class Visit>
bool forBoxes(const Box& parent, std::size_t skipped, Visit&& visit) {
    if (skipped > parent.content.size()) {
        return false;
    }
    const Bytes inner = parent.content.subspan(skipped);
    Numbers numbers(inner);
    while (numbers.good() && !numbers.atEnd()) {
        const Box box = nextBox(numbers, parent.at + skipped, inner.size());
        if (numbers.good() && !visit(box)) {
            return false;
        }
    }
    return numbers.good();
}

struct Item {
    std::uint32_t kind = 0;
    std::uint64_t hidingByte = 0;
};

// What of the container's description says how the primary picture is put together.
class Description {
  public:
    // False when it is damaged.
    bool read(const Box& meta) {
        constexpr std::size_t versionAndFlags = 4;
        return forBoxes(meta, versionAndFlags, [this](const Box& box) { return readBox(box); });
    }

    std::optional<HeifGrid> grid(ByteSource& source) const;

  private:
    bool readBox(const Box& box);
    bool readItems(const Box& box);
    bool readReferences(const Box& box);
    bool readPlaces(const Box& box);
    bool readProperties(const Box& box);
    bool readUses(const Box& box);
    bool takeLayout(ByteSource& source, HeifGrid& grid) const;
    bool sizeAgrees(const HeifGrid& grid) const;
    bool takeTurn(HeifGrid& grid) const;
    bool takeTiles(HeifGrid& grid) const;
    bool isNested() const;
    bool isOfKind(std::uint32_t number, std::initializer_list<std::uint32_t> kinds) const;
    // Null when there is no such property; they count from 1.
    const Box* property(std::size_t index) const;

    std::uint32_t primary_ = 0;
    std::map<std::uint32_t, Item> items_;
    std::map<std::uint32_t, std::vector<std::uint32_t>> parts_;      // an item's, in order
    std::map<std::uint32_t, std::pair<bool, std::uint64_t>> places_; // within idat or the file
    std::vector<Box> properties_;
    std::map<std::uint32_t, std::vector<std::size_t>> uses_; // an item's properties, from 1
    Box data_;                                               // idat
};

bool Description::readBox(const Box& box) {
    Numbers numbers(box.content);
    switch (box.kind) {
    case kindOf("pitm"): {
        const bool wide = numbers.word() >> 24 != 0;
        primary_ = numbers.item(wide);
        return numbers.good();
    }
    case kindOf("iinf"):
        return readItems(box);
    case kindOf("iref"):
        return readReferences(box);
    case kindOf("iloc"):
        return readPlaces(box);
    case kindOf("iprp"):
        return forBoxes(box, 0, [this](const Box& inner) { return readProperties(inner); });
    case kindOf("idat"):
        data_ = box;
        return true;
    default:
        return true;
    }
}

bool Description::readItems(const Box& box) {
    const bool wide = !box.content.empty() && box.content.front() != 0;
    return forBoxes(box, wide ? 8 : 6, [this](const Box& entry) {
        Numbers numbers(entry.content);
        const unsigned version = numbers.word() >> 24;
        if (entry.kind != kindOf("infe") || version < 2) {
            return true; // older ones name no kind
        }
        const std::uint32_t number = numbers.item(version > 2);
        numbers.next(2);
        constexpr std::uint64_t lowestFlags = 3;
        items_[number] = {numbers.word(), entry.at + lowestFlags};
        return numbers.good();
    });
}

bool Description::readReferences(const Box& box) {
    const bool wide = !box.content.empty() && box.content.front() != 0;
    return forBoxes(box, 4, [this, wide](const Box& entry) {
        Numbers numbers(entry.content);
        const std::uint32_t from = numbers.item(wide);
        if (entry.kind == kindOf("dimg")) {
            std::vector<std::uint32_t>& parts = parts_[from];
            for (std::uint64_t left = numbers.next(2); left > 0 && numbers.good(); --left) {
                parts.push_back(numbers.item(wide));
            }
        }
        return numbers.good();
    });
}

bool Description::readPlaces(const Box& box) {
    Numbers numbers(box.content);
    const unsigned version = numbers.word() >> 24;
    const unsigned sizes = static_cast<unsigned>(numbers.next(2));
    const std::size_t offsetSize = sizes >> 12;
    const std::size_t lengthSize = sizes >> 8 & 15;
    const std::size_t baseSize = sizes >> 4 & 15;
    const std::size_t indexSize = version > 0 ? sizes & 15 : 0;
    for (std::uint64_t left = numbers.next(version > 1 ? 4 : 2); left > 0 && numbers.good();
         --left) {
        const std::uint32_t number = numbers.item(version > 1);
        const std::uint64_t method = version > 0 ? numbers.next(2) & 15 : 0;
        numbers.next(2);
        const std::uint64_t base = numbers.next(baseSize);
        const std::uint64_t extents = numbers.next(2);
        for (std::uint64_t i = 0; i < extents && numbers.good(); ++i) {
            numbers.next(indexSize);
            const std::uint64_t offset = numbers.next(offsetSize);
            numbers.next(lengthSize);
            if (extents == 1 && method < 2) {
                places_[number] = {method == 1, base + offset};
            }
        }
    }
    return numbers.good();
}

bool Description::readProperties(const Box& box) {
    if (box.kind == kindOf("ipma")) {
        return readUses(box);
    }
    if (box.kind != kindOf("ipco")) {
        return true;
    }
    return forBoxes(box, 0, [this](const Box& property) {
        properties_.push_back(property);
        return true;
    });
}

bool Description::readUses(const Box& box) {
    Numbers numbers(box.content);
    const std::uint32_t versionAndFlags = numbers.word();
    const bool wideNumbers = versionAndFlags >> 24 != 0;
    const bool wideIndices = (versionAndFlags & 1) != 0;
    for (std::uint32_t left = numbers.word(); left > 0 && numbers.good(); --left) {
        std::vector<std::size_t>& used = uses_[numbers.item(wideNumbers)];
        for (unsigned i = numbers.byte(); i > 0 && numbers.good(); --i) {
            // The highest bit says that a reader has to know the property.
            used.push_back(wideIndices ? numbers.next(2) & 0x7FFF : numbers.next(1) & 0x7F);
        }
    }
    return numbers.good();
}

const Box* Description::property(std::size_t index) const {
    return index == 0 || index > properties_.size() ? nullptr : &properties_[index - 1];
}

// The picture's own data: how many tiles, and the size of the whole.
bool Description::takeLayout(ByteSource& source, HeifGrid& grid) const {
    const auto place = places_.find(primary_);
    if (place == places_.end()) {
        return false;
    }
    std::array<std::uint8_t, 12> bytes{};
    const auto [within, at] = place->second;
    if (within) {
        const std::size_t there =
            at < data_.content.size() ? data_.content.size() - static_cast<std::size_t>(at) : 0;
        std::copy_n(data_.content.end() - static_cast<std::ptrdiff_t>(there),
                    std::min(there, bytes.size()), bytes.begin());
    } else {
        source.readAt(at, bytes.data(), bytes.size());
    }
    Numbers numbers(bytes);
    const unsigned version = numbers.byte();
    const std::size_t size = (numbers.byte() & 1) != 0 ? 4 : 2;
    grid.rows = numbers.byte() + 1;
    grid.columns = numbers.byte() + 1;
    const std::uint64_t width = numbers.next(size);
    const std::uint64_t height = numbers.next(size);
    constexpr std::uint64_t most = 1 << 24;
    grid.width = static_cast<int>(std::min(width, most));
    grid.height = static_cast<int>(std::min(height, most));
    return version == 0 && width > 0 && width < most && height > 0 && height < most;
}

// Whether the picture's properties say the size that its layout says.
bool Description::sizeAgrees(const HeifGrid& grid) const {
    const auto used = uses_.find(primary_);
    if (used == uses_.end()) {
        return false;
    }
    bool said = false;
    for (const std::size_t index : used->second) {
        const Box* size = property(index);
        if (size == nullptr || size->kind != kindOf("ispe")) {
            continue;
        }
        Numbers numbers(size->content);
        numbers.next(4); // version and flags
        if (numbers.word() != static_cast<std::uint32_t>(grid.width) ||
            numbers.word() != static_cast<std::uint32_t>(grid.height)) {
            return false;
        }
        said = true;
    }
    return said;
}

bool changesPicture(std::uint32_t kind) {
    return kind == kindOf("irot") || kind == kindOf("imir") || kind == kindOf("clap");
}

bool Description::takeTurn(HeifGrid& grid) const {
    constexpr std::array<Orientation, 4> againstTheClock{
        Orientation::upright, Orientation::counterClockwise, Orientation::halfTurned,
        Orientation::clockwise};
    const auto used = uses_.find(primary_);
    int turns = 0;
    for (const std::size_t index :
         used == uses_.end() ? std::vector<std::size_t>() : used->second) {
        const Box* turn = property(index);
        if (turn == nullptr) {
            return false;
        }
        if (turn->kind == kindOf("irot") && !turn->content.empty() && ++turns == 1) {
            grid.orientation = againstTheClock[turn->content.front() & 3];
        } else if (changesPicture(turn->kind)) {
            return false;
        }
    }
    return true;
}

bool Description::takeTiles(HeifGrid& grid) const {
    const auto parts = parts_.find(primary_);
    if (parts == parts_.end() ||
        parts->second.size() !=
            static_cast<std::size_t>(grid.rows) * static_cast<std::size_t>(grid.columns)) {
        return false;
    }
    for (const std::uint32_t tile : parts->second) {
        const auto item = items_.find(tile);
        if (item == items_.end() ||
            (item->second.kind != kindOf("hvc1") && item->second.kind != kindOf("av01"))) {
            return false;
        }
        const auto used = uses_.find(tile);
        if (used == uses_.end() ||
            std::any_of(used->second.begin(), used->second.end(), [this](std::size_t index) {
                const Box* found = property(index);
                return found == nullptr || changesPicture(found->kind);
            })) {
            return false;
        }
        grid.tiles.push_back(tile);
        grid.hidingBytes.push_back(item->second.hidingByte);
    }
    std::sort(grid.hidingBytes.begin(), grid.hidingBytes.end());
    return true;
}

bool Description::isOfKind(std::uint32_t number, std::initializer_list<std::uint32_t> kinds) const {
    const auto item = items_.find(number);
    return item != items_.end() &&
           std::find(kinds.begin(), kinds.end(), item->second.kind) != kinds.end();
}

// Whether pictures are put together of such that are themselves put together, deeper than any
// program writes them: an overlay or a copy of a grid is the most.
bool Description::isNested() const {
    return std::any_of(parts_.begin(), parts_.end(), [this](const auto& whole) {
        const auto& [number, parts] = whole;
        const bool isGrid = isOfKind(number, {kindOf("grid")});
        const bool isOther = isOfKind(number, {kindOf("iovl"), kindOf("iden")});
        return (isGrid || isOther) &&
               std::any_of(parts.begin(), parts.end(), [&](std::uint32_t part) {
                   return isOfKind(part, {kindOf("iovl"), kindOf("iden")}) ||
                          (isGrid && isOfKind(part, {kindOf("grid")}));
               });
    });
}

std::optional<HeifGrid> Description::grid(ByteSource& source) const {
    if (isNested()) {
        throw Error("its header is damaged or incomplete");
    }
    const auto primary = items_.find(primary_);
    HeifGrid grid;
    if (primary == items_.end() || primary->second.kind != kindOf("grid")) {
        return std::nullopt;
    }
    if (!takeLayout(source, grid) || !sizeAgrees(grid)) {
        throw Error("its header is damaged or incomplete");
    }
    if (!takeTurn(grid) || !takeTiles(grid)) {
        return std::nullopt;
    }
    return grid;
}

} // namespace

std::optional<HeifGrid> readHeifGrid(ByteSource& source) {
    constexpr std::uint64_t longestDescription = 4 << 20;
    std::array<std::uint8_t, 16> head{};
    bool film = false;
    for (std::uint64_t at = 0; at < source.size();) {
        const std::size_t got = source.readAt(at, head.data(), head.size());
        Numbers numbers(Bytes(head).first(got));
        std::uint64_t size = numbers.word();
        const std::uint32_t kind = numbers.word();
        std::uint64_t headSize = 8;
        if (size == 1) {
            size = numbers.next(8);
            headSize = 16;
        }
        if (!numbers.good() || size < headSize || size > source.size() - at) {
            return std::nullopt; // damaged, or the data, which reach to the end
        }
        if (kind != kindOf("meta")) {
            film = film || kind == kindOf("moov");
            at += size;
            continue;
        }
        if (size > longestDescription) {
            return std::nullopt;
        }
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size - headSize));
        Description description;
        if (!source.readFully(at + headSize, bytes.data(), bytes.size()) ||
            !description.read({kind, bytes, at + headSize})) {
            return std::nullopt;
        }
        return description.grid(source);
    }
    if (film) {
        // A sequence; versions of the library differ in what they say of it.
        throw Error("it holds no picture");
    }
    return std::nullopt;
}

} // namespace veldara
