#include "surface/codecs/ProgramResources.h"

#include <algorithm>
#include <utility>

namespace zelvane {

namespace {

constexpr uint32_t kTopBit = 0x80000000u;
/// In a table of 16 bits, of what is a number and no text.
constexpr uint32_t kNumber = 0x8000;

/// Where the resources are in memory; 0 where the header lists none.
uint32_t TreeAddress(ByteView optional_header) {
  constexpr uint32_t kKind32 = 0x10B, kKind64 = 0x20B;
  constexpr uint32_t kResources = 2, kDirectory = 8;  // the number of the list's entry; bytes of one
  const uint32_t kind = optional_header.Little16(0);
  if (kind != kKind32 && kind != kKind64) return 0;
  const uint64_t count_at = kind == kKind64 ? 108 : 92;
  if (optional_header.Little32(count_at) <= kResources) return 0;
  return optional_header.Little32(count_at + 4 + kResources * kDirectory);
}

}  // namespace

ProgramResources::ProgramResources(RangeReader read) : read_(std::move(read)) {
  constexpr size_t kOldHeader = 64, kNewHeader = 40, kLargestTable = 0x10000;
  const Bytes start = read_(0, kOldHeader);
  if (!View(start).StartsWith("MZ", 2)) return;
  const uint64_t header_at = View(start).Little32(60);
  const Bytes header = read_(header_at, kNewHeader);
  if (View(header).StartsWith("PE\0\0", 4)) FindTree(header_at);
  const uint32_t table = View(header).Little16(36), names = View(header).Little16(38);
  if (View(header).StartsWith("NE", 2) && table != names) table_ = read_(header_at + table, kLargestTable);
}

void ProgramResources::FindTree(uint64_t header_at) {
  constexpr size_t kHeader = 24, kOptionalHeader = 240, kSection = 40;
  const Bytes header_bytes = read_(header_at, kHeader + kOptionalHeader);
  const ByteView header = View(header_bytes);
  const uint32_t section_count = header.Little16(6), optional_size = header.Little16(20);
  const Bytes table = read_(header_at + kHeader + optional_size, section_count * kSection);
  for (uint64_t at = 0; View(table).Has(at, kSection); at += kSection) {
    const ByteView section = View(table).From(at);
    sections_.push_back({section.Little32(12), section.Little32(16), section.Little32(20)});
  }
  const uint32_t address = TreeAddress(header.Part(kHeader, optional_size));
  if (address != 0) tree_ = PlaceOf(address);
}

/// No value for what the file doesn't hold.
std::optional<uint64_t> ProgramResources::PlaceOf(uint32_t address) const {
  for (const Section& section : sections_) {
    if (address < section.address || address - section.address >= section.size) continue;
    return uint64_t{section.at} + (address - section.address);
  }
  return std::nullopt;
}

std::vector<ProgramResources::Entry> ProgramResources::EntriesOf(uint32_t directory, uint32_t most) const {
  constexpr size_t kHeader = 16, kEntry = 8;
  const uint64_t at = *tree_ + (directory & ~kTopBit);
  const Bytes header = read_(at, kHeader);
  const uint32_t count = std::min(most, View(header).Little16(12) + View(header).Little16(14));
  const Bytes table = read_(at + kHeader, count * kEntry);
  std::vector<Entry> entries;
  for (uint64_t entry = 0; View(table).Has(entry, kEntry); entry += kEntry)
    entries.push_back({View(table).Little32(entry), View(table).Little32(entry + 4)});
  return entries;
}

/// Places and sizes are told in units of a power of two.
std::vector<ProgramResources::Entry> ProgramResources::InTable(uint32_t type) const {
  constexpr size_t kShift = 2, kType = 8, kEntry = 12;
  constexpr uint32_t kMostShift = 15;
  const ByteView table = View(table_);
  const uint32_t shift = table.Little16(0);
  std::vector<Entry> entries;
  if (shift > kMostShift) return entries;
  for (uint64_t at = kShift; table.Has(at, kType) && table.Little16(at) != 0;) {
    const bool is_wanted = table.Little16(at) == (kNumber | type);
    const uint64_t end = at + kType + table.Little16(at + 2) * kEntry;
    for (at += kType; is_wanted && at < end && table.Has(at, kEntry); at += kEntry) {
      const uint32_t name = table.Little16(at + 6);
      entries.push_back({name & kNumber ? name & ~kNumber : kTopBit | name, table.Little16(at) << shift,
                         table.Little16(at + 2) << shift});
    }
    at = end;
  }
  return entries;
}

std::vector<ProgramResources::Entry> ProgramResources::OfType(uint32_t type) const {
  if (!tree_) return InTable(type);
  for (const Entry& entry : EntriesOf(0)) {
    if (entry.name == type && (entry.leads_to & kTopBit)) return EntriesOf(entry.leads_to);
  }
  return {};
}

Bytes ProgramResources::DataOf(const Entry& entry, size_t most) const {
  constexpr size_t kPlaceAndSize = 8;
  if (!tree_) return entry.size <= most ? read_(entry.leads_to, entry.size) : Bytes{};
  uint32_t leads_to = entry.leads_to;
  if (leads_to & kTopBit) {
    const std::vector<Entry> languages = EntriesOf(leads_to, 1);
    if (languages.empty()) return {};
    leads_to = languages.front().leads_to;
  }
  if (leads_to & kTopBit) return {};
  const Bytes data = read_(*tree_ + leads_to, kPlaceAndSize);
  const std::optional<uint64_t> place = PlaceOf(View(data).Little32(0));
  const uint32_t size = View(data).Little32(4);
  if (!place || size > most) return {};
  return read_(*place, size);
}

}  // namespace zelvane
