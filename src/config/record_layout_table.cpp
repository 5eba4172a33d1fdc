#include "config/record_layout_table.h"

#include "api/hvapi.h"

namespace hv {
namespace {

using Record = HvCommandRecord;

constexpr FieldDescriptor CommandFields[] = {
    {"szKey", 0, sizeof(Record::szKey), offsetof(Record, szKey), "P_PPPP"},
    {"szDescr", 0, sizeof(Record::szDescr), offsetof(Record, szDescr),
     "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"},
    {"szEmulation", 0, sizeof(Record::szEmulation), offsetof(Record, szEmulation), "XXXX"},
    {"szCommand", 0, sizeof(Record::szCommand), offsetof(Record, szCommand),
     "PPPPXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXXX"},
    {"szVarFormat", 0, sizeof(Record::szVarFormat), offsetof(Record, szVarFormat), "XXXX"},
    {"dVarRangeLo", 4, sizeof(Record::dVarRangeLo), offsetof(Record, dVarRangeLo), "##.##"},
    {"dVarRangeHi", 4, sizeof(Record::dVarRangeHi), offsetof(Record, dVarRangeHi), "##.##"},
    {"dVarIncrement", 4, sizeof(Record::dVarIncrement), offsetof(Record, dVarIncrement), "##.##"},
    {"szDuration", 0, sizeof(Record::szDuration), offsetof(Record, szDuration), "P"},
};

constexpr KeyDefinition CommandKeys[] = {
    {offsetof(Record, szKey), sizeof(Record::szKey), 0},
    {offsetof(Record, szDescr), sizeof(Record::szDescr), 1},
};

}  // namespace

constexpr RecordLayout CommandRecordLayout = {sizeof(Record), CommandFields, CommandKeys};

}  // namespace hv
