// Writes Exif blocks: what a camera stores, and what none would.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <utility>
#include <vector>

/// A block in the making: entries of the first directory, then, from ExifDirectory() on, those of the Exif directory.
/// Values stand in the order of their entries behind each directory.
class ExifBlock {
public:
    using Bytes = std::vector<unsigned char>;

    explicit ExifBlock(bool bigEndian) : m_bigEndian(bigEndian) { }

    /// An entry with the bytes of its value, `count` items in the block's byte order; up to 4 bytes stand in the entry.
    ExifBlock& Entry(unsigned id, unsigned type, std::uint32_t count, Bytes value)
    {
        m_directories.back().push_back({id, type, count, std::move(value)});
        return *this;
    }
    ExifBlock& Raw(unsigned id, unsigned type, std::uint32_t count, std::string_view value)
    {
        return Entry(id, type, count, Bytes(value.begin(), value.end()));
    }
    ExifBlock& Text(unsigned id, std::string_view text)
    {
        Bytes value(text.begin(), text.end());
        value.push_back(0);
        const auto count = static_cast<std::uint32_t>(value.size());
        return Entry(id, 2, count, std::move(value));
    }
    ExifBlock& Undefined(unsigned id, std::string_view bytes)
    {
        return Raw(id, 7, static_cast<std::uint32_t>(bytes.size()), bytes);
    }
    ExifBlock& Shorts(unsigned id, std::initializer_list<std::uint32_t> numbers)
    {
        return Numbers(id, 3, 2, 1, numbers);
    }
    ExifBlock& Longs(unsigned id, std::initializer_list<std::uint32_t> numbers)
    {
        return Numbers(id, 4, 4, 1, numbers);
    }
    /// Numerators and denominators in turn.
    ExifBlock& Rationals(unsigned id, std::initializer_list<std::uint32_t> numbers, unsigned type = 5)
    {
        return Numbers(id, type, 4, 2, numbers);
    }
    /// Ends the first directory with the pointer to the Exif directory, to which all further entries go.
    ExifBlock& ExifDirectory()
    {
        Entry(34665, 4, 1, Bytes(4));
        m_directories.emplace_back();
        return *this;
    }

    Bytes Build() const
    {
        Bytes out;
        out.insert(out.end(), 2, m_bigEndian ? 'M' : 'I');
        Put(out, 42, 2);
        Put(out, 8, 4);
        for (const auto& directory : m_directories)
            PutDirectory(out, directory, &directory != &m_directories.back());
        return out;
    }

private:
    struct Item {
        unsigned id;
        unsigned type;
        std::uint32_t count;
        Bytes value;
    };

    static std::size_t Padded(std::size_t size) { return size + size % 2; }

    ExifBlock& Numbers(
        unsigned id, unsigned type, unsigned width, unsigned perItem, std::initializer_list<std::uint32_t> numbers)
    {
        Bytes value;
        for (const std::uint32_t number : numbers)
            Put(value, number, width);
        return Entry(id, type, static_cast<std::uint32_t>(numbers.size() / perItem), std::move(value));
    }

    void Put(Bytes& out, std::uint32_t number, unsigned width) const
    {
        for (unsigned i = 0; i < width; ++i)
            out.push_back(static_cast<unsigned char>(number >> 8 * (m_bigEndian ? width - 1 - i : i)));
    }

    void PutDirectory(Bytes& out, const std::vector<Item>& directory, bool hasNext) const
    {
        std::size_t valueAt = out.size() + 2 + 12 * directory.size() + 4;
        std::size_t next = valueAt;
        for (const Item& item : directory)
            next += item.value.size() > 4 ? Padded(item.value.size()) : 0;
        Put(out, static_cast<std::uint32_t>(directory.size()), 2);
        for (const Item& item : directory) {
            Put(out, item.id, 2);
            Put(out, item.type, 2);
            Put(out, item.count, 4);
            if (item.id == 34665 && hasNext) {
                Put(out, static_cast<std::uint32_t>(next), 4);
            } else if (item.value.size() > 4) {
                Put(out, static_cast<std::uint32_t>(valueAt), 4);
                valueAt += Padded(item.value.size());
            } else {
                out.insert(out.end(), item.value.begin(), item.value.end());
                out.resize(out.size() + 4 - item.value.size());
            }
        }
        Put(out, 0, 4);
        for (const Item& item : directory) {
            if (item.value.size() <= 4)
                continue;
            out.insert(out.end(), item.value.begin(), item.value.end());
            out.resize(Padded(out.size()));
        }
    }

    bool m_bigEndian;
    std::vector<std::vector<Item>> m_directories = {{}};
};

/// What a camera writes, without a maker note: 51 entries in two directories.
inline ExifBlock::Bytes CameraBlock(bool bigEndian)
{
    using namespace std::string_view_literals;
    ExifBlock block(bigEndian);
    block.Text(270, "Harbour at dusk").Text(271, "Northlight").Text(272, "Northlight Meridian 5");
    block.Shorts(274, {6}).Rationals(282, {300, 1}).Rationals(283, {300, 1}).Shorts(296, {2});
    block.Text(305, "Meridian firmware 2.10").Text(306, "2023:06:01 21:04:07").Text(315, "A. Keeper").Shorts(531, {2});
    block.Text(33432, "Copyright 2023 A. Keeper").ExifDirectory();
    block.Rationals(33434, {1, 250}).Rationals(33437, {28, 10}).Shorts(34850, {3}).Shorts(34855, {400});
    block.Shorts(34864, {2}).Longs(34866, {400}).Undefined(36864, "0230").Text(36867, "2023:06:01 21:04:07");
    block.Text(36868, "2023:06:01 21:04:07").Undefined(37121, "\1\2\3\0"sv).Rationals(37122, {4, 1});
    block.Rationals(37377, {7965784, 1000000}, 10).Rationals(37378, {2970854, 1000000}).Rationals(37380, {0, 1}, 10);
    block.Rationals(37381, {2970854, 1000000}).Shorts(37383, {5}).Shorts(37384, {0}).Shorts(37385, {16});
    block.Rationals(37386, {35, 1}).Undefined(37510, "ASCII\0\0\0Seen from the pier"sv).Text(37520, "42");
    block.Text(37521, "42").Text(37522, "42").Undefined(40960, "0100").Shorts(40961, {1}).Longs(40962, {6000});
    block.Longs(40963, {4000}).Rationals(41486, {6000, 36}).Rationals(41487, {4000, 24}).Shorts(41488, {2});
    block.Shorts(41495, {2}).Undefined(41728, "\3").Undefined(41729, "\1").Shorts(41985, {0}).Shorts(41986, {0});
    block.Shorts(41987, {0}).Shorts(41989, {52}).Shorts(41990, {0});
    return block.Build();
}
