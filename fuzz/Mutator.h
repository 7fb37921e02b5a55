// Inputs made from seeds by small changes: the same ones in every run and on every machine.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

using FuzzInput = std::vector<std::uint8_t>;

/// Gives the input of each number, whatever others were asked for before.
class Mutator {
public:
    /// @param seeds at least one, in an order that is always the same
    explicit Mutator(std::vector<FuzzInput> seeds) : m_seeds(std::move(seeds)) { }
    FuzzInput Make(std::uint64_t number);

private:
    static constexpr std::size_t kLongest = std::size_t{64} << 10;   // bytes

    /// A number below `count`, which is not 0.
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(m_random() % count); }
    /// A place in the input, its end included.
    std::size_t Place(const FuzzInput& input) { return Below(input.size() + 1); }
    const FuzzInput& Seed() { return m_seeds[Below(m_seeds.size())]; }
    void Change(FuzzInput& input);

    void FlipBit(FuzzInput& input);
    void SetByte(FuzzInput& input);
    void SetNumber(FuzzInput& input);
    void Insert(FuzzInput& input);
    void Remove(FuzzInput& input);
    void Repeat(FuzzInput& input);
    void Move(FuzzInput& input);
    void CutShort(FuzzInput& input);
    void Splice(FuzzInput& input);

    std::vector<FuzzInput> m_seeds;
    std::mt19937_64
        m_random;   // whose numbers the standard lays down; its distributions would differ between libraries
};
