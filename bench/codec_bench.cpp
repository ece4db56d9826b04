// Speed of the text codecs, as ratios within one run: the compressor against the literal one of
// the tests, everything else against memcpy. The speed of an encoder or decoder is that of its
// input, the decompressor's that of its output; 1 MB of text is 524288 characters.
//     codec_bench --figures    only the times that the component's under Wine are compared with
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

#include "bench/processor_time.h"
#include "bench/reference_lcss.h"
#include "bench/sample_texts.h"
#include "codec/lcss_compress.h"
#include "codec/lcss_decompress.h"
#include "codec/uu_decode.h"
#include "codec/uu_encode.h"

using namespace tessera;
using samples::megabyte;

namespace {

const AnsiCodePage& page_1252 = AnsiCodePage::windows_1252();
bool all_met = true;

// Processor time for what takes long, since other processes take their share of it; it is too
// coarse for the rest.
template <typename Function>
double seconds(Function function) {
    const std::clock_t clock_start = std::clock();
    const auto start = std::chrono::steady_clock::now();
    function();
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    const double used = static_cast<double>(std::clock() - clock_start) / CLOCKS_PER_SEC;
    return passed.count() < 0.05 ? passed.count() : used;
}

// The best of many runs for what is short, of few for what takes seconds.
template <typename Function>
double best_seconds(Function function) {
    double best = seconds(function);
    double total = best;
    for (int runs = 1; runs < 200 && total < 1; ++runs) {
        const double next = seconds(function);
        best = std::min(best, next);
        total += next;
    }
    return best;
}

void print_row(const char* what, std::size_t characters, double own, double other, double ratio,
               double goal) {
    std::printf("%-34s %8zu %12.3f %12.3f %9.3f", what, characters, own * 1e3, other * 1e3, ratio);
    if (goal > 0) {
        const bool met = ratio >= goal;
        all_met = all_met && met;
        std::printf("   >= %-5g %s\n", goal, met ? "met" : "MISSED");
    } else {
        std::printf("   for comparison\n");
    }
    std::fflush(stdout);
}

void print_heading(const char* what, const char* other) {
    std::printf("\n%-34s %8s %12s %12s %9s   %s\n", what, "chars", "ms", other, "ratio", "goal");
}

void compare_with_reference(const char* what, const std::u16string& text, double goal) {
    const auto character_of_byte = [](std::size_t byte) {
        return page_1252.to_char(static_cast<std::uint8_t>(byte));
    };
    std::u16string compressed;
    std::u16string expected;
    const double own = best_seconds([&] { compressed = LCSSCompress(text, page_1252); });
    const double other =
        best_seconds([&] { expected = reference::compress(text, character_of_byte); });
    print_row(what, text.size(), own, other, other / own, goal);
    if (compressed != expected) {
        std::printf("  DIFFERS from the reference\n");
        all_met = false;
    }
}

void compare_compressors() {
    print_heading("compress", "reference ms");
    samples::RandomTexts random(1);
    compare_with_reference("query rows", random.query_rows(megabyte), 20);
    // A quarter and an eighth of 1 MB: the reference takes its time per character.
    compare_with_reference("no repeats", samples::without_repeats(megabyte / 4), 5);
    compare_with_reference("random bytes", random.from(samples::without_repeats(256), megabyte / 8),
                           1);
    compare_with_reference("one character", std::u16string(megabyte, u'x'), 1);
    for (const std::size_t period : {2, 3, 17, 100, 254, 255, 256, 260}) {
        const std::string what = "period " + std::to_string(period);
        compare_with_reference(what.c_str(), samples::periodic(period, megabyte), 1);
    }
}

double memcpy_seconds(std::size_t characters) {
    // Behind a volatile pointer, so that the copying cannot be left out.
    void* (*volatile copy)(void*, const void*, std::size_t) = std::memcpy;
    const std::u16string from(characters, u'x');
    std::u16string to(characters, u'y');
    return best_seconds([&] { copy(to.data(), from.data(), characters * sizeof(char16_t)); });
}

// What the caller of a codec provides: memory for the result, new with every call.
using Room = std::unique_ptr<char16_t[]>;

Room room_for(std::size_t characters) {
    return std::make_unique_for_overwrite<char16_t[]>(characters);
}

Room decompressed(std::u16string_view compressed) {
    Room room = room_for(lcss_extent(compressed, page_1252).length);
    LCSSDecompress(compressed, page_1252, room.get());
    return room;
}

Room encoded(std::u16string_view text) {
    Room room = room_for(uu_encoded_length(text.size()));
    UUEncode(text, page_1252, room.get());
    return room;
}

Room decoded(std::u16string_view text) {
    Room room = room_for(uu_decoded_room(text.size()));
    UUDecode(text, page_1252, {}, room.get());
    return room;
}

template <typename Function>
void compare_with_memcpy(const char* what, std::size_t characters, double goal, Function codec) {
    Room result;
    const double own = best_seconds([&] { result = codec(); });
    const double other = memcpy_seconds(characters);
    print_row(what, characters, own, other, other / own, goal);
}

void compare_others() {
    print_heading("decompress, UU", "memcpy ms");
    samples::RandomTexts random(1);
    for (const std::size_t length : {megabyte / 4, megabyte / 2, megabyte}) {
        const std::u16string compressed = LCSSCompress(random.query_rows(length), page_1252);
        compare_with_memcpy("LCSSDecompress, query rows", length, 0.05,
                            [&] { return decompressed(compressed); });
    }
    const std::u16string rows = random.query_rows(megabyte);
    compare_with_memcpy("UUEncode, query rows", megabyte, 0.15, [&] { return encoded(rows); });
    const std::u16string lines = UUEncode(rows, page_1252).substr(0, megabyte);
    compare_with_memcpy("UUDecode, query rows", megabyte, 0.15, [&] { return decoded(lines); });
    // What a vector cannot convert: every eighth byte has no character of the same value.
    std::u16string bytes = random.from(samples::without_repeats(256), megabyte);
    std::transform(bytes.begin(), bytes.end(), bytes.begin(), [](char16_t byte) {
        return page_1252.to_char(static_cast<std::uint8_t>(byte));
    });
    compare_with_memcpy("UUEncode, random bytes", megabyte, 0, [&] { return encoded(bytes); });
    const std::u16string byte_lines = UUEncode(bytes, page_1252).substr(0, megabyte);
    compare_with_memcpy("UUDecode, random bytes", megabyte, 0, [&] { return decoded(byte_lines); });
}

double processor_time() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

template <typename Codec>
void print_figure(const char* name, Codec codec) {
    const double time = bench::processor_seconds(processor_time, codec);
    std::printf("{\"name\": \"%s\", \"native\": %.4f}\n", name, time * 1e6);
}

// What the component's figures under Wine are held against: one JSON object a line. There, large
// results are fresh memory of the system's with every call; here, too.
void print_figures() {
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    const std::u16string rows = samples::RandomTexts(1).query_rows(megabyte);
    const std::u16string compressed = LCSSCompress(rows, page_1252);
    const std::u16string lines = UUEncode(rows, page_1252);
    print_figure("codec-compress", [&] { return LCSSCompress(rows, page_1252); });
    print_figure("codec-decompress", [&] { return decompressed(compressed); });
    print_figure("codec-uuencode", [&] { return encoded(rows); });
    print_figure("codec-uudecode", [&] { return decoded(lines); });
}

}  // namespace

int main(int count, char** arguments) {
    if (count > 1 && std::strcmp(arguments[1], "--figures") == 0) {
        print_figures();
        return 0;
    }
    compare_others();
    compare_compressors();
    std::printf("\n%s\n", all_met ? "All goals are met." : "Some goals are MISSED.");
    return all_met ? 0 : 1;
}
