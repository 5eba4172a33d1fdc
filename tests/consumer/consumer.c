/* Frames a string for a printer, into the file that is named. */
#include <hvapi.h>
#include <stdio.h>
#include <string.h>

int main(int argc, char** argv) {
  HvJobInfo job;
  memset(&job, 0, sizeof job);
  job.flags = JOB_FLAG_PJL;
  job.emulation = JOB_EMULATION_PCL;
  job.jobName = "Consumer";
  if (argc != 2) return 2;
  return (int)HvDatSendString("$\\x1BE", argv[1], &job, 0);
}
