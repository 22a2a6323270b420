#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "FuzzTargets.h"
#include "base/Failure.h"
#include "engine/font/FontFile.h"
#include "engine/font/JournalEntry.h"
#include "engine/font/WorkingCopy.h"

namespace dravik {

using namespace engine;
namespace {

constexpr std::string_view kMagic = "TLXJRNL\n";

// Entries of a type, a length of two bytes and so many bytes each, with the head, the times and the checksums
// that a fuzzer would never guess; behind one that fits the font.
std::vector<std::uint8_t> wrapped(std::span<const std::uint8_t> bytes, FontDigest digest) {
    std::vector<std::uint8_t> journal = journalHead();
    const auto append = [&journal](const std::vector<std::uint8_t>& entry) {
        journal.insert(journal.end(), entry.begin(), entry.end());
    };
    KnownState known;
    known.digest = digest;
    known.saved = 0;
    append(encodeEntry({known, {}}));
    while (bytes.size() > 3) {
        const std::size_t length = std::min<std::size_t>(bytes[1] + 256u * bytes[2], bytes.size() - 3);
        ByteWriter out;
        out.u32(length);
        out.u32(bytes[0]);
        out.u64(1);
        out.raw(bytes.subspan(3, length));
        out.u32(checksum(out.bytes()));
        append(out.bytes());
        bytes = bytes.subspan(3 + length);
    }
    return journal;
}

// The font that the journals belong to.
FontRecord font() {
    FontRecord record;
    record.characterSet = {"A", "B"};
    for (const std::int32_t code : {'A', 'B', 'A'}) {
        Sample& sample = record.samples.emplace_back();
        sample.serial = record.nextSerial++;
        sample.code = code;
    }
    record.distances.resize(record.samples.size());
    return record;
}

void write(const std::filesystem::path& file, const std::vector<std::uint8_t>& bytes) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// What is changed and saved can be read again.
void use(WorkingCopy& copy, const std::string& file) {
    while (copy.undoWords()) copy.undo();
    while (copy.redoWords()) copy.redo();
    Sample sample;
    sample.serial = copy.state().samples.nextSerial();
    sample.code = 'B';
    copy.make(AddUncommitted{{sample}});
    copy.make(CommitUncommitted{1});
    copy.endAct("inclusion", "");
    const std::size_t samples = copy.state().samples.count(tool::SampleKind::Committed);
    copy.save();
    if (readFont(file).samples.size() != samples) std::abort();
}

}  // namespace

void tryJournal(std::span<const std::uint8_t> bytes) {
    static const std::filesystem::path folder = [] {
        auto made = std::filesystem::temp_directory_path() /
                    ("dravik-journal-" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(made);
        return made;
    }();
    const std::vector<std::uint8_t> content = encodeFont(font());
    const bool whole =
        bytes.size() >= kMagic.size() && std::equal(kMagic.begin(), kMagic.end(), bytes.begin());
    const std::filesystem::path file = folder / "f.nnd";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    write(file, content);
    write(folder / "f.nnd.journal",
          whole ? std::vector<std::uint8_t>(bytes.begin(), bytes.end()) : wrapped(bytes, digestOf(content)));
    JournalFlusher flusher;
    try {
        WorkingCopy copy("f", file.string(), flusher);
        if (copy.found().isForeign || copy.found().letGo) copy.dropJournal();
        use(copy, file.string());
    } catch (const Failure&) {
        return;  // an act that does not fit the state it would lead to
    }
}

}  // namespace dravik
