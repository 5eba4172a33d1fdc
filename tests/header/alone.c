/* The chief header alone, in strict C and in C++ (alone.cpp includes this): it needs nothing before
   it and warns of nothing. */
#include "hvapi.h"

#include <string.h>

uint32_t SendByHeader(const char* file);

uint32_t SendByHeader(const char* file) {
  HvJobInfo job;
  memset(&job, 0, sizeof job);
  job.flags = JOB_FLAG_PJL;
  job.emulation = JOB_EMULATION_PCL;
  return HvDatSendFile(file, "lp1", &job, 0);
}
