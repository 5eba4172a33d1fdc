// A one-page PCL XL job turned into a job that defines a named stream of the operators of the page,
// and on request runs it.
//
// Published source of the protocol: the PCL XL Feature Reference, protocol class 1.1.
#pragma once

#include <cstdint>

#include "pclxl/work_files.h"

namespace hv {

// Reads the job in PclXlWorkFiles::Input and writes the converted one to PclXlWorkFiles::Output;
// the page goes through PclXlWorkFiles::Page. streamName holds fewer than 256 characters. With
// executeFlag not 0 the converted job also runs the stream once, on a page of its own.
//
// Returns a code of PclXlResult (pclxl/job_reader.h): 0, or why the job cannot be converted. The
// work files stay in both cases, the output perhaps unfinished; the caller removes them.
uint32_t PclXlConvertStream(const PclXlWorkFiles& held, const char* streamName,
                            uint32_t executeFlag);

}  // namespace hv
