#include "Mutator.h"

#include <algorithm>
#include <iterator>

namespace {
constexpr std::uint64_t kSeed = 20240531;
constexpr std::uint8_t kBytes[] = {0, 1, 9, 10, 13, 32, '"', '&', '(', ')', '-', '.', '/', '0', '9', ':', ';', '<', '=',
    '>', '[', '\\', ']', 'e', '{', '}', 127, 128, 0xC0, 0xE2, 0xFE, 0xFF};
// Where counts and offsets begin to be too large, or to be taken for negative ones.
constexpr std::uint32_t kNumbers[] = {0, 1, 2, 0x7F, 0x80, 0xFF, 0x100, 0x7FFF, 0x8000, 0xFFFF, 0x10000, 0x7FFFFFFF,
    0x80000000, 0xFFFFFFF0, 0xFFFFFFFE, 0xFFFFFFFF};

std::ptrdiff_t Offset(std::size_t place) { return static_cast<std::ptrdiff_t>(place); }
}   // namespace

FuzzInput Mutator::Make(std::uint64_t number)
{
    m_random.seed(kSeed ^ number * 0x9E3779B97F4A7C15u);
    FuzzInput input = Seed();
    for (std::size_t changes = 1 + Below(6); changes > 0; --changes)
        Change(input);
    input.resize(std::min(input.size(), kLongest));
    return input;
}

void Mutator::Change(FuzzInput& input)
{
    constexpr void (Mutator::*kChanges[])(FuzzInput&) = {&Mutator::FlipBit, &Mutator::SetByte, &Mutator::SetByte,
        &Mutator::SetNumber, &Mutator::SetNumber, &Mutator::Insert, &Mutator::Remove, &Mutator::Repeat, &Mutator::Move,
        &Mutator::CutShort, &Mutator::Splice};
    if (input.empty())
        return Insert(input);
    (this->*kChanges[Below(std::size(kChanges))])(input);
}

void Mutator::FlipBit(FuzzInput& input) { input[Below(input.size())] ^= static_cast<std::uint8_t>(1u << Below(8)); }

void Mutator::SetByte(FuzzInput& input) { input[Below(input.size())] = kBytes[Below(std::size(kBytes))]; }

/// A number of one, two or four bytes, in either order.
void Mutator::SetNumber(FuzzInput& input)
{
    const std::uint32_t number = kNumbers[Below(std::size(kNumbers))];
    const std::size_t width = std::size_t{1} << Below(3);
    const bool isBigEndian = Below(2) == 0;
    const std::size_t place = Below(input.size());
    for (std::size_t i = 0; i < width && place + i < input.size(); ++i)
        input[place + i] = static_cast<std::uint8_t>(number >> 8 * (isBigEndian ? width - 1 - i : i));
}

void Mutator::Insert(FuzzInput& input)
{
    const FuzzInput bytes(1 + Below(8), kBytes[Below(std::size(kBytes))]);
    input.insert(input.begin() + Offset(Place(input)), bytes.begin(), bytes.end());
}

void Mutator::Remove(FuzzInput& input)
{
    const std::size_t place = Below(input.size());
    const std::size_t size = 1 + Below(std::min<std::size_t>(input.size() - place, 64));
    input.erase(input.begin() + Offset(place), input.begin() + Offset(place + size));
}

/// A piece once more, or many times.
void Mutator::Repeat(FuzzInput& input)
{
    const std::size_t from = Below(input.size());
    const std::size_t size = 1 + Below(std::min<std::size_t>(input.size() - from, 32));
    const FuzzInput piece(input.begin() + Offset(from), input.begin() + Offset(from + size));
    const std::size_t times = Below(8) == 0 ? 200 : 1;
    FuzzInput pieces;
    for (std::size_t i = 0; i < times; ++i)
        pieces.insert(pieces.end(), piece.begin(), piece.end());
    input.insert(input.begin() + Offset(Place(input)), pieces.begin(), pieces.end());
}

void Mutator::Move(FuzzInput& input)
{
    const std::size_t size = 1 + Below(std::min<std::size_t>(input.size(), 32));
    const std::size_t from = Below(input.size() - size + 1);
    const std::size_t to = Below(input.size() - size + 1);
    const FuzzInput piece(input.begin() + Offset(from), input.begin() + Offset(from + size));
    std::copy(piece.begin(), piece.end(), input.begin() + Offset(to));
}

void Mutator::CutShort(FuzzInput& input) { input.resize(Below(input.size())); }

/// A piece of another seed somewhere between those of this.
void Mutator::Splice(FuzzInput& input)
{
    const FuzzInput& other = Seed();
    if (other.empty())
        return;
    const std::size_t from = Below(other.size());
    const std::size_t size = 1 + Below(std::min<std::size_t>(other.size() - from, 512));
    const std::size_t place = Place(input);
    input.insert(input.begin() + Offset(place), other.begin() + Offset(from), other.begin() + Offset(from + size));
}
