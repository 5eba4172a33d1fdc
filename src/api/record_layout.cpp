// The documented offsets and sizes of the public records, checked where pointers take 4 bytes.

#include <cstddef>

#include "api/hvapi.h"

namespace {

constexpr bool PointersTakeFourBytes = sizeof(void*) == 4;

// True where the documented number is kept, and where it does not apply.
constexpr bool Documented(std::size_t actual, std::size_t onThirtyTwoBits) {
  return !PointersTakeFourBytes || actual == onThirtyTwoBits;
}

static_assert(offsetof(HvJobInfo, flags) == 0x00);
static_assert(offsetof(HvJobInfo, printerClass) == 0x04);
static_assert(offsetof(HvJobInfo, emulation) == 0x08);
static_assert(offsetof(HvJobInfo, fontQueryArg) == 0x0C);
static_assert(offsetof(HvJobInfo, copies) == 0x14);
static_assert(offsetof(HvJobInfo, identifier) == 0x16);
static_assert(offsetof(HvJobInfo, fontValue18) == 0x18);
static_assert(offsetof(HvJobInfo, fontValue1A) == 0x1A);
static_assert(offsetof(HvJobInfo, nbxAddress1) == 0x27);
static_assert(offsetof(HvJobInfo, nbxAddress2) == 0x29);
static_assert(offsetof(HvJobInfo, jobName) == 0x2B);
static_assert(Documented(offsetof(HvJobInfo, personality), 0x2F));
static_assert(Documented(sizeof(HvJobInfo), 48));

static_assert(sizeof(HvApiInfo) == 128);

static_assert(offsetof(HvFontInfo, flags) == 0);
static_assert(offsetof(HvFontInfo, fontClass) == 4);
static_assert(offsetof(HvFontInfo, fontType) == 8);
static_assert(offsetof(HvFontInfo, xResolution) == 12);
static_assert(offsetof(HvFontInfo, yResolution) == 14);
static_assert(offsetof(HvFontInfo, fileSize) == 16);
static_assert(offsetof(HvFontInfo, memoryNeeded) == 20);
static_assert(offsetof(HvFontInfo, name) == 24);
static_assert(offsetof(HvFontInfo, description) == 104);
static_assert(offsetof(HvFontInfo, symbolSet) == 184);
static_assert(offsetof(HvFontInfo, companionPath1) == 190);
static_assert(offsetof(HvFontInfo, companionPath2) == 450);
static_assert(offsetof(HvFontInfo, cartridge) == 710);
static_assert(Documented(sizeof(HvFontInfo), 714));

static_assert(offsetof(HvMacroInfo, flags) == 0);
static_assert(offsetof(HvMacroInfo, name) == 4);
static_assert(offsetof(HvMacroInfo, callMacroId) == 28);
static_assert(offsetof(HvMacroInfo, target) == 30);
static_assert(offsetof(HvMacroInfo, macroId) == 34);
static_assert(offsetof(HvMacroInfo, filterMask) == 36);
static_assert(sizeof(HvMacroInfo) == 40);

static_assert(offsetof(HvDemoInfo, method) == 4);
static_assert(offsetof(HvDemoInfo, name) == 8);
static_assert(offsetof(HvDemoInfo, headerByte) == 32);
static_assert(offsetof(HvDemoInfo, target) == 33);
static_assert(sizeof(HvDemoInfo) == 37);

static_assert(offsetof(HvFoundResource, path) == 0);
static_assert(offsetof(HvFoundResource, details) == 260);
static_assert(Documented(offsetof(HvFoundResource, next), 264));
static_assert(Documented(offsetof(HvFoundResource, kind), 268));
static_assert(Documented(offsetof(HvFoundResource, nameOffset), 272));
static_assert(Documented(offsetof(HvFoundResource, size), 273));
static_assert(Documented(sizeof(HvFoundResource), 277));

static_assert(offsetof(HvOptionEntry, value1) == 0x00);
static_assert(offsetof(HvOptionEntry, value5) == 0x04);
static_assert(offsetof(HvOptionEntry, text) == 0x08);
static_assert(Documented(sizeof(HvOptionEntry), 12));

static_assert(offsetof(HvOptionGroup, name) == 0x00);
static_assert(Documented(offsetof(HvOptionGroup, description), 0x04));
static_assert(Documented(offsetof(HvOptionGroup, valueCount), 0x08));
static_assert(Documented(offsetof(HvOptionGroup, values), 0x0C));
static_assert(Documented(sizeof(HvOptionGroup), 16));

static_assert(offsetof(HvOptionInfo, entryCount) == 0x00);
static_assert(offsetof(HvOptionInfo, entries) == 0x04);
static_assert(Documented(offsetof(HvOptionInfo, groupCount), 0x08));
static_assert(Documented(offsetof(HvOptionInfo, groups), 0x0C));
static_assert(Documented(sizeof(HvOptionInfo), 16));

static_assert(offsetof(HvJobAccountJob, j1Item1) == 0);
static_assert(offsetof(HvJobAccountJob, j1Item2) == 4);
static_assert(offsetof(HvJobAccountJob, j1Item3) == 8);
static_assert(offsetof(HvJobAccountJob, j1Item4) == 12);
static_assert(offsetof(HvJobAccountJob, j1Item5) == 16);
static_assert(offsetof(HvJobAccountJob, j1Item6) == 20);
static_assert(offsetof(HvJobAccountJob, j1Item7) == 24);
static_assert(offsetof(HvJobAccountJob, j1Item8) == 34);
static_assert(offsetof(HvJobAccountJob, j1Item9) == 38);
static_assert(offsetof(HvJobAccountJob, j1Item10) == 42);
static_assert(offsetof(HvJobAccountJob, j1Item11) == 46);
static_assert(offsetof(HvJobAccountJob, j2Item1) == 62);
static_assert(offsetof(HvJobAccountJob, j2Item2) == 103);
static_assert(offsetof(HvJobAccountJob, j2Item3) == 124);
static_assert(offsetof(HvJobAccountJob, j2Item4) == 145);
static_assert(offsetof(HvJobAccountJob, j2Item5) == 149);
static_assert(offsetof(HvJobAccountJob, j2Item6) == 153);
static_assert(offsetof(HvJobAccountJob, j2Item7) == 157);
static_assert(offsetof(HvJobAccountJob, j2Item8) == 161);
static_assert(offsetof(HvJobAccountJob, j2Item9) == 165);
static_assert(offsetof(HvJobAccountJob, j2Item10) == 169);
static_assert(sizeof(HvJobAccountJob) == 173);

static_assert(offsetof(HvJobAccountDevice, d1Item1) == 0);
static_assert(offsetof(HvJobAccountDevice, d2Item1) == 4);
static_assert(offsetof(HvJobAccountDevice, d2Item2) == 8);
static_assert(offsetof(HvJobAccountDevice, d2Item3) == 12);
static_assert(offsetof(HvJobAccountDevice, d2Item4) == 16);
static_assert(offsetof(HvJobAccountDevice, d2Item5) == 20);
static_assert(offsetof(HvJobAccountDevice, d2Item6) == 24);
static_assert(offsetof(HvJobAccountDevice, d2Item7) == 40);
static_assert(offsetof(HvJobAccountDevice, d2Item8) == 44);
static_assert(offsetof(HvJobAccountDevice, d3Item1) == 54);
static_assert(offsetof(HvJobAccountDevice, d3Item2) == 58);
static_assert(offsetof(HvJobAccountDevice, d3Item3) == 62);
static_assert(offsetof(HvJobAccountDevice, d3Item4) == 66);
static_assert(offsetof(HvJobAccountDevice, d3Item5) == 70);
static_assert(sizeof(HvJobAccountDevice) == 74);

static_assert(offsetof(HvJobAccount, jobBlock) == 0x00);
static_assert(Documented(offsetof(HvJobAccount, deviceBlock), 0x04));
static_assert(Documented(sizeof(HvJobAccount), 8));

static_assert(offsetof(HvIniHandle, flags) == 0x105);
static_assert(offsetof(HvIniHandle, maxLineLength) == 0x109);
static_assert(offsetof(HvIniHandle, cursor) == 0x10D);
static_assert(Documented(offsetof(HvIniHandle, lines), 0x111));
static_assert(Documented(sizeof(HvIniHandle), 277));

static_assert(sizeof(double) == 8);
static_assert(offsetof(HvCommandRecord, szKey) == 0);
static_assert(offsetof(HvCommandRecord, szDescr) == 6);
static_assert(offsetof(HvCommandRecord, szEmulation) == 108);
static_assert(offsetof(HvCommandRecord, szCommand) == 114);
static_assert(offsetof(HvCommandRecord, szVarFormat) == 216);
static_assert(offsetof(HvCommandRecord, dVarRangeLo) == 222);
static_assert(offsetof(HvCommandRecord, dVarRangeHi) == 230);
static_assert(offsetof(HvCommandRecord, dVarIncrement) == 238);
static_assert(offsetof(HvCommandRecord, szDuration) == 246);
static_assert(sizeof(HvCommandRecord) == 248);

static_assert(offsetof(HvConfigFileEntry, path) == 0);
static_assert(offsetof(HvConfigFileEntry, description) == 260);
static_assert(offsetof(HvConfigFileEntry, next) == 308);
static_assert(Documented(sizeof(HvConfigFileEntry), 312));

static_assert(offsetof(HvPageDefault, controlId) == 0);
static_assert(offsetof(HvPageDefault, value) == 2);
static_assert(sizeof(HvPageDefault) == 6);

static_assert(offsetof(HvQsfHandle, header) == 12);
static_assert(offsetof(HvQsfHandle, fileSize) == 86);
static_assert(sizeof(HvQsfHandle) == 90);

}  // namespace
