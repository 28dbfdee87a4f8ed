#include "x11/scaler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace vcc::platform {

namespace {

constexpr int channels = 4;
constexpr unsigned whole = 256; ///< weight of a wholly covered pixel

using Bytes = std::uint8_t;

Bytes* row_of(PixelRows rows, int y) {
    return rows.first + y * rows.pitch;
}

constexpr Bytes mixed(unsigned a, unsigned b, unsigned weight) {
    return static_cast<Bytes>((a * (whole - weight) + b * weight + whole / 2) / whole);
}

// Most of the work: the compiler vectorizes these two loops.

/// Each pixel of a row mixed with the next one.
void mix_neighbours(const Bytes* __restrict row, const std::uint16_t* __restrict weights, Bytes* __restrict to,
                    int from, int end) {
    for (int i = from * channels; i < end * channels; ++i) {
        const auto a = static_cast<std::uint16_t>(row[i]), b = static_cast<std::uint16_t>(row[i + channels]);
        to[i] = mixed(a, b, weights[i]);
    }
}

void mix_rows(const Bytes* __restrict a, const Bytes* __restrict b, Bytes* __restrict to, int count,
              std::uint16_t weight) {
    for (int i = 0; i < count; ++i)
        to[i] = mixed(a[i], b[i], weight);
}

/// A field of a two-byte pixel.
struct Field {
    explicit Field(std::uint32_t mask) : shift(std::countr_zero(mask)), most((1U << std::popcount(mask)) - 1) {}
    int shift;
    unsigned most;

    unsigned to_byte(unsigned pixel) const { return ((pixel >> shift & most) * 255 + most / 2) / most; }
    unsigned from_byte(unsigned byte) const { return (byte * most + 127) / 255 << shift; }
};

} // namespace

bool is_scalable(const PixelFormat& format) {
    return std::ranges::all_of(std::array{format.red, format.green, format.blue}, [&](std::uint32_t mask) {
        const int bits = std::popcount(mask), place = std::countr_zero(mask);
        if (bits < 1 || bits > 8 || mask >> place != (1U << bits) - 1)
            return false;
        return format.bytes == 4 ? bits == 8 && place % 8 == 0 : format.bytes == 2 && mask <= 0xFFFF;
    });
}

Scaler::Enlarged Scaler::enlarged(int picture, int shown) {
    Enlarged axis;
    axis.pick.resize(index(shown));
    axis.weight.resize(index(picture));
    for (int i = 0; i < shown; ++i) {
        // In units of 1 / shown of a picture pixel, this one covers [begin, begin + picture).
        const long long begin = 1LL * i * picture;
        const auto first = static_cast<int>(begin / shown);
        const long long in_second = begin + picture - (first + 1LL) * shown;
        const long long share = in_second > 0 ? (2LL * whole * in_second + picture) / (2LL * picture) : 0;
        const bool edge = share > 0 && share < whole;
        if (edge)
            axis.weight[index(first)] = static_cast<std::uint16_t>(share);
        axis.pick[index(i)] = static_cast<std::uint16_t>(edge ? picture + first : share == 0 ? first : first + 1);
    }
    return axis;
}

Scaler::Reduced Scaler::reduced(int picture, int shown) {
    Reduced axis;
    const double extent = static_cast<double>(picture) / shown;
    for (int i = 0; i < shown; ++i) {
        const double begin = i * extent, end = begin + extent;
        const int first = static_cast<int>(1LL * i * picture / shown);
        const int last = static_cast<int>(((i + 1LL) * picture + shown - 1) / shown);
        axis.covers.push_back({first, last - first, axis.shares.size()});
        for (int k = first; k < last; ++k)
            axis.shares.push_back(static_cast<float>((std::min(end, k + 1.0) - std::max(begin, 1.0 * k)) / extent));
    }
    return axis;
}

Scaler::Scaler(Size picture, Size shown, PixelFormat format) : picture_(picture), format_(format) {
    const int step = shown.width / picture.width;
    if (step >= 1 && shown == Size{picture.width * step, picture.height * step})
        step_ = step;
    reduces_ = shown.width < picture.width || shown.height < picture.height;
    if (format.bytes == 2 && step_ == 0) {
        const Field fields[] = {Field(format.red), Field(format.green), Field(format.blue)};
        unpack_.resize(0x10000);
        for (unsigned pixel = 0; pixel < unpack_.size(); ++pixel)
            unpack_[pixel] = fields[0].to_byte(pixel) | fields[1].to_byte(pixel) << 8 | fields[2].to_byte(pixel) << 16;
        for (const Field& field : fields)
            for (unsigned byte = 0; byte < 256; ++byte)
                pack_.push_back(static_cast<std::uint16_t>(field.from_byte(byte)));
    }
    if (reduces_) {
        across_reduced_ = reduced(picture.width, shown.width);
        down_reduced_ = reduced(picture.height, shown.height);
        return;
    }
    across_ = enlarged(picture.width, shown.width);
    down_ = enlarged(picture.height, shown.height);
    for (const std::uint16_t weight : across_.weight)
        edge_weights_.insert(edge_weights_.end(), channels, weight);
}

void Scaler::scale(PixelRows picture, PixelRows shown, Area area) const {
    if (area.empty())
        return;
    if (reduces_)
        average(picture, shown, area);
    else if (step_ == 0)
        mix(picture, shown, area);
    else if (format_.bytes == 4)
        repeat<std::uint32_t>(picture, shown, area);
    else
        repeat<std::uint16_t>(picture, shown, area);
}

template <typename Pixel>
void Scaler::repeat(PixelRows picture, PixelRows shown, Area area) const {
    const std::size_t begin = index(area.x1) * sizeof(Pixel), count = index(area.x2 - area.x1) * sizeof(Pixel);
    for (int y = area.y1; y < area.y2; ++y) {
        Bytes* const to = row_of(shown, y);
        if (y > area.y1 && y % step_ != 0) {
            std::memcpy(to + begin, to + begin - shown.pitch, count);
            continue;
        }
        const auto* const from = reinterpret_cast<const Pixel*>(row_of(picture, y / step_));
        auto* const pixels = reinterpret_cast<Pixel*>(to);
        for (int x = area.x1; x < area.x2; ++x)
            pixels[x] = from[across_.pick[index(x)]];
    }
}

const std::uint32_t* Scaler::unpacked(const Bytes* row, int from, int to, std::uint32_t* scratch) const {
    if (format_.bytes == 4)
        return reinterpret_cast<const std::uint32_t*>(row);
    const auto* const pixels = reinterpret_cast<const std::uint16_t*>(row);
    for (int x = from; x < to; ++x)
        scratch[x] = unpack_[pixels[x]];
    return scratch;
}

void Scaler::store(const std::uint32_t* colours, Bytes* row, int from, int to) const {
    if (format_.bytes == 4) {
        std::memcpy(row + index(from) * sizeof *colours, colours, index(to - from) * sizeof *colours);
        return;
    }
    auto* const pixels = reinterpret_cast<std::uint16_t*>(row);
    for (int x = from; x < to; ++x, ++colours)
        pixels[x] = static_cast<std::uint16_t>(pack_[*colours & 0xFF] | pack_[256 + (*colours >> 8 & 0xFF)] |
                                               pack_[512 + (*colours >> 16 & 0xFF)]);
}

void Scaler::mix(PixelRows picture, PixelRows shown, Area area) const {
    const int count = area.x2 - area.x1;
    const auto pixel_of = [](std::uint16_t pick, int extent) { return pick < extent ? pick : pick - extent; };
    const int from = pixel_of(across_.pick[index(area.x1)], picture_.width);
    const int end = std::min(picture_.width, pixel_of(across_.pick[index(area.x2 - 1)], picture_.width) + 2);

    // The latest widened rows of the picture, an even and an odd one.
    std::vector<std::uint32_t> scratch(2 * index(picture_.width) + 3 * index(count));
    std::uint32_t* const picks = scratch.data(); ///< a row's pixels, then its edges
    std::uint32_t* const lines = picks + index(2 * picture_.width);
    std::uint32_t* const blended = lines + index(2 * count);
    int held[2] = {-1, -1};
    const auto widened = [&](int y) {
        std::uint32_t* const line = lines + index((y & 1) * count);
        if (held[y & 1] == y)
            return line;
        held[y & 1] = y;
        const std::uint32_t* const colours = unpacked(row_of(picture, y), from, end, picks);
        if (colours != picks)
            std::memcpy(picks + from, colours + from, index(end - from) * sizeof *picks);
        mix_neighbours(reinterpret_cast<const Bytes*>(picks), edge_weights_.data(),
                       reinterpret_cast<Bytes*>(picks + picture_.width), from, end - 1);
        const std::uint16_t* const pick = across_.pick.data() + area.x1;
        for (int x = 0; x < count; ++x)
            line[x] = picks[pick[x]];
        return line;
    };

    int stored = -1; // the pick of the row above
    for (int y = area.y1; y < area.y2; ++y) {
        const int pick = down_.pick[index(y)];
        Bytes* const to = row_of(shown, y);
        if (pick == stored) {
            const std::size_t begin = index(area.x1 * format_.bytes);
            std::memcpy(to + begin, to + begin - shown.pitch, index(count * format_.bytes));
            continue;
        }
        stored = pick;
        if (pick < picture_.height) {
            store(widened(pick), to, area.x1, area.x2);
            continue;
        }
        const int first = pick - picture_.height;
        Bytes* const target = format_.bytes == 4 ? to + index(area.x1 * channels) : reinterpret_cast<Bytes*>(blended);
        mix_rows(reinterpret_cast<const Bytes*>(widened(first)), reinterpret_cast<const Bytes*>(widened(first + 1)),
                 target, count * channels, down_.weight[index(first)]);
        if (format_.bytes == 2)
            store(blended, to, area.x1, area.x2);
    }
}

void Scaler::average(PixelRows picture, PixelRows shown, Area area) const {
    const Reduced::Cover &left = across_reduced_.covers[index(area.x1)],
                         &right = across_reduced_.covers[index(area.x2 - 1)];
    const int from = left.first, end = right.first + right.count;
    std::vector<std::uint32_t> scratch(index(picture_.width) + index(area.x2 - area.x1));
    std::uint32_t* const line = scratch.data() + picture_.width;
    std::vector<float> sums(index(end - from) * channels);
    for (int y = area.y1; y < area.y2; ++y) {
        const Reduced::Cover& rows = down_reduced_.covers[index(y)];
        std::ranges::fill(sums, 0.0F);
        for (int k = 0; k < rows.count; ++k) {
            const std::uint32_t* const colours = unpacked(row_of(picture, rows.first + k), from, end, scratch.data());
            const auto* const bytes = reinterpret_cast<const Bytes*>(colours + from);
            const float share = down_reduced_.shares[rows.share + index(k)];
            for (std::size_t i = 0; i < sums.size(); ++i)
                sums[i] += share * static_cast<float>(bytes[i]);
        }
        for (int x = area.x1; x < area.x2; ++x) {
            const Reduced::Cover& columns = across_reduced_.covers[index(x)];
            float colour[channels] = {};
            for (int k = 0; k < columns.count; ++k)
                for (int c = 0; c < channels; ++c)
                    colour[c] += across_reduced_.shares[columns.share + index(k)] *
                                 sums[index((columns.first + k - from) * channels + c)];
            Bytes bytes[channels];
            for (int c = 0; c < channels; ++c)
                bytes[c] = static_cast<Bytes>(std::min(colour[c] + 0.5F, 255.0F));
            std::memcpy(line + (x - area.x1), bytes, sizeof bytes);
        }
        store(line, row_of(shown, y), area.x1, area.x2);
    }
}

} // namespace vcc::platform
