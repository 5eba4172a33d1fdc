/*
 * A client that nobody linked to the library: it loads HvApiW32.dll, looks every export up by its
 * plain name and calls it by the standard calling convention. Each call is made with every
 * alignment that a stack may have, and the stack pointer is checked behind it, so that a function
 * which takes another number of arguments than its clients push does not go unnoticed.
 *
 * Prints one line a check, "ok ..." or "not ok ...", and ends with the counts.
 */
#include <stdint.h>
#include <stdio.h>
#include <string.h>
#include <windows.h>

static int passed;
static int failed;

static void Check(int holds, const char* what, const char* name) {
  printf("%s %s %s\n", holds ? "ok" : "not ok", what, name);
  if (holds) {
    ++passed;
  } else {
    ++failed;
  }
}

/* ---- the exports and how many arguments, of 4 bytes each, their clients push ---- */

typedef struct Export {
  const char* name;
  uint32_t arguments;
} Export;

static const Export Exports[] = {
    {"HvDatSendFile", 4},
    {"HvDatSendString", 4},
    {"HvDatOpenFile", 3},
    {"HvDatCloseFile", 1},
    {"HvDatGetFirstKey", 2},
    {"HvDatGetNextKey", 2},
    {"HvDatQueryCount", 3},
    {"HvDatQueryCounts", 3},
    {"HvDatQueryFiles", 3},
    {"HvDatQueryFilesFree", 1},
    {"HvDemDownload", 4},
    {"HvDemFind", 4},
    {"HvFonFind", 6},
    {"HvFonFind2", 7},
    {"HvFonFindFree", 1},
    {"HvMacFind", 5},
    {"HvFilBackup", 2},
    {"HvFilChecksum", 4},
    {"HvFilCopy", 2},
    {"HvFilExists", 1},
    {"HvFilMakePath", 2},
    {"HvFilModify", 3},
    {"HvFilQuerySize", 1},
    {"HvFonQueryInfo", 4},
    {"HvFonDownload", 4},
    {"HvFonConvert", 5},
    {"HvParseOptionInfo", 1},
    {"HvFreeOptionInfo", 1},
    {"HvParseJobAccountingAlert", 1},
    {"HvFreeJobAccount", 1},
    {"HvGenQueryApiInfo", 1},
    {"HvGenQueryAdapters", 4},
    {"HvGenQueryQueues", 4},
    {"HvGenResource", 4},
    {"HvNetGetType", 1},
    {"HvMemFree", 1},
    {"HvStrCpyFile", 2},
    {"HvStrCpyPath", 2},
    {"HvIniOpen", 1},
    {"HvIniOpen2", 2},
    {"HvIniClose", 1},
    {"HvIniRead", 3},
    {"HvIniRead2", 7},
    {"HvIniWrite", 4},
    {"HvIniWriteAll", 4},
    {"HvIniDelete", 4},
    {"HvMacCreate", 4},
    {"HvMacDownload", 6},
    {"HvMacActivate", 3},
    {"HvMacDelete", 2},
    {"HvMacValidate", 3},
    {"HvOpcRegisterCfg", 2},
    {"HvOpcUnregisterCfg", 1},
    {"HvOpcGetFileName", 2},
    {"HvOpcGetTextListing", 5},
    {"HvOpcGetMaxEditLength", 2},
    {"HvOpcGetSpinControlLimits", 5},
    {"HvOpcGetPageDefaults", 4},
    {"HvOpcGetPageOmVars", 4},
    {"HvQsfOpen", 3},
    {"HvQsfClose", 1},
    {"HvQsfGetVariables", 4},
    {"HvQsfIniGetSection", 5},
    {"HvWebGetURL", 6},
    {"HvWebGetCGIURL", 7},
    {"HvZipExplode", 3},
    {"HvZipImplode", 3},
};
enum { ExportCount = sizeof Exports / sizeof Exports[0], MostArguments = 7 };

static HMODULE library;

/* The names in the export table of a loaded module. */
static const DWORD* ExportedNames(HMODULE module, DWORD* count) {
  const BYTE* base = (const BYTE*)module;
  const IMAGE_DOS_HEADER* dos = (const IMAGE_DOS_HEADER*)base;
  const IMAGE_NT_HEADERS32* nt = (const IMAGE_NT_HEADERS32*)(base + dos->e_lfanew);
  const IMAGE_DATA_DIRECTORY* place =
      &nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
  const IMAGE_EXPORT_DIRECTORY* table =
      (const IMAGE_EXPORT_DIRECTORY*)(base + place->VirtualAddress);
  *count = table->NumberOfNames;
  return (const DWORD*)(base + table->AddressOfNames);
}

static const Export* FindExport(const char* name) {
  for (int i = 0; i < ExportCount; ++i) {
    if (strcmp(Exports[i].name, name) == 0) return &Exports[i];
  }
  return NULL;
}

/* ---- how applications see some of them ---- */

typedef uint32_t(__stdcall* TextFunction)(const char*);
typedef uint32_t(__stdcall* OpenFunction)(const char*, uint32_t);
typedef char*(__stdcall* CopyFunction)(char*, const char*);
typedef void(__stdcall* InfoFunction)(uint16_t*);
typedef uint32_t(__stdcall* SendFunction)(const char*, const char*, const void*, uint32_t);
typedef uint32_t(__stdcall* ResourceFunction)(uint32_t, const char*, const void*, uint32_t);

/* The address as a type of its own; a plain cast of function pointers is warned of. */
#define FUNCTION(type, name) ((type)(void*)GetProcAddress(library, name))

static char target[MAX_PATH];

static uint32_t Address(const void* p) {
  return (uint32_t)(uintptr_t)p;
}

/* ---- calls with an eye on the stack ---- */

/*
 * Pushes the arguments on a stack that stands `misalignment` bytes below a multiple of 16 and calls
 * the function. Returns its result; `left` receives how many bytes of arguments it left behind
 * (negative when it took more than there were).
 */
static uint32_t CallOnStack(FARPROC function, const uint32_t* arguments, uint32_t count,
                            uint32_t misalignment, int32_t* left) {
  uint32_t result;
  uint32_t behind;
  __asm__ volatile(
      "movl %%esp, %%ebx\n\t"
      "andl $-16, %%esp\n\t"
      "subl %%edx, %%esp\n\t"
      "movl %%esp, %%edi\n"
      "1:\n\t"
      "testl %%ecx, %%ecx\n\t"
      "jz 2f\n\t"
      "decl %%ecx\n\t"
      "pushl (%%esi,%%ecx,4)\n\t"
      "jmp 1b\n"
      "2:\n\t"
      "call *%%eax\n\t"
      "movl %%edi, %%edx\n\t"
      "subl %%esp, %%edx\n\t"
      "movl %%ebx, %%esp\n\t"
      : "=a"(result), "=d"(behind), "+c"(count)
      : "a"(function), "d"(misalignment), "S"(arguments)
      : "ebx", "edi", "memory", "cc");
  *left = (int32_t)behind;
  return result;
}

/*
 * Fills the arguments of a call that does nothing: zeros, which exports refuse, but for those that
 * trust what they are given. These get a record to fill, or a fresh handle and empty texts.
 */
static void FillArguments(const Export* export, uint32_t arguments[MostArguments]) {
  enum { BufferSize = 5 };
  static char scratch[1024];
  memset(scratch, 0, sizeof scratch);
  memset(arguments, 0, MostArguments * sizeof arguments[0]);
  const int wantsHandle =
      strncmp(export->name, "HvIni", 5) == 0 && strncmp(export->name, "HvIniOpen", 9) != 0;
  if (!wantsHandle && strcmp(export->name, "HvGenQueryApiInfo") != 0) return;
  for (uint32_t i = 0; i < export->arguments; ++i) arguments[i] = Address(scratch);
  if (wantsHandle) {
    const uint32_t handle = FUNCTION(OpenFunction, "HvIniOpen2")(target, 8);
    arguments[0] = handle;
    arguments[BufferSize] = sizeof scratch / 2;
  }
}

/* Calls an export at every alignment of the stack. */
static void CheckStack(const Export* export) {
  const FARPROC function = GetProcAddress(library, export->name);
  int32_t left = 0;
  Check(function != NULL, "is found by its plain name:", export->name);
  for (uint32_t misalignment = 0; function != NULL && misalignment < 16; misalignment += 4) {
    uint32_t arguments[MostArguments];
    int32_t leftHere = 0;
    FillArguments(export, arguments);
    CallOnStack(function, arguments, export->arguments, misalignment, &leftHere);
    if (leftHere != 0) left = leftHere;
  }
  Check(left == 0, "takes its arguments from the stack:", export->name);
}

/* ---- calls as an application makes them ---- */

static void CheckTarget(const char* expected, const char* name) {
  char bytes[512] = "";
  DWORD got = 0;
  HANDLE file = CreateFileA(target, GENERIC_READ, FILE_SHARE_READ, NULL, OPEN_EXISTING, 0, NULL);
  if (file != INVALID_HANDLE_VALUE) {
    ReadFile(file, bytes, sizeof bytes - 1, &got, NULL);
    CloseHandle(file);
  }
  Check(got == strlen(expected) && memcmp(bytes, expected, got) == 0, "writes its bytes:", name);
}

/* A job record laid out by hand: the offsets are those that applications are compiled for. */
static void FillJob(BYTE job[48], const char* name) {
  const uint32_t pjl = 0x08;
  const int32_t pcl = 5;
  const uint16_t copies = 3;
  memset(job, 0, 48);
  memcpy(job + 0x00, &pjl, sizeof pjl);
  memcpy(job + 0x08, &pcl, sizeof pcl);
  memcpy(job + 0x14, &copies, sizeof copies);
  memcpy(job + 0x2B, &name, sizeof name);
}

static void CheckSending(void) {
  const SendFunction sendString = FUNCTION(SendFunction, "HvDatSendString");
  const ResourceFunction resource = FUNCTION(ResourceFunction, "HvGenResource");
  BYTE job[48];
  FillJob(job, "Setup");
  Check(sendString("$\\x1BE", target, job, 0) == 0, "gives success:", "HvDatSendString");
  CheckTarget(
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n@PJL ENTER LANGUAGE = PCL\n"
      "\x1B"
      "E"
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X",
      "HvDatSendString");
  Check(resource(3, target, job, 4) == 0, "gives success:", "HvGenResource");
  CheckTarget(
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"Setup\"\n@PJL ENTER LANGUAGE = PCL\n"
      "\x1B%-12345X@PJL QFORMAT DEVICE = disk1\n"
      "\x1B%-12345X@PJL RDYMSG DISPLAY = \"\"\n\x1B%-12345X",
      "HvGenResource");
  Check(resource(5, target, job, 4) == 1, "refuses an unknown operation:", "HvGenResource");
}

static uint32_t linesSeen;

static uint32_t __stdcall MarkLine(char* line, uint32_t argument) {
  linesSeen += argument;
  line[0] = '#';
  return 0;
}

static void CheckCallback(void) {
  const SendFunction sendString = FUNCTION(SendFunction, "HvDatSendString");
  BYTE job[48];
  FillJob(job, NULL);
  job[0] = 0;
  sendString("$one\\ntwo\\n", target, job, 0);
  const uint32_t arguments[] = {Address(target), 1000, (uint32_t)(uintptr_t)MarkLine};
  int32_t left = 0;
  const uint32_t code = CallOnStack(GetProcAddress(library, "HvFilModify"), arguments, 3, 0, &left);
  Check(code == 0 && left == 0, "calls back by the standard convention:", "HvFilModify");
  Check(linesSeen == 2000, "passes the caller's argument:", "HvFilModify");
  CheckTarget("#ne\r\n#wo\r\n", "HvFilModify");
}

static void CheckPlainCalls(const char* libraryName) {
  char text[64];
  uint16_t words[64];
  memset(words, 0xAA, sizeof words);
  FUNCTION(InfoFunction, "HvGenQueryApiInfo")(words);
  Check(words[0] == 830 && words[63] == 0, "tells the version:", "HvGenQueryApiInfo");
  Check(FUNCTION(TextFunction, "HvFilExists")(libraryName) == 1, "sees the file:", "HvFilExists");
  Check(FUNCTION(CopyFunction, "HvStrCpyFile")(text, "c:\\fonts\\arial.pcl") == text &&
            strcmp(text, "ARIAL.PCL") == 0,
        "gives the name:", "HvStrCpyFile");
}

int main(int argc, char** argv) {
  const char* libraryName = argc > 1 ? argv[1] : "HvApiW32.dll";
  char folder[MAX_PATH];
  DWORD count = 0;
  library = LoadLibraryA(libraryName);
  Check(library != NULL, "loads:", libraryName);
  if (library == NULL) return 1;
  GetTempPathA(sizeof folder, folder);
  GetTempFileNameA(folder, "hv", 0, target);

  const DWORD* names = ExportedNames(library, &count);
  for (DWORD i = 0; i < count; ++i) {
    const char* name = (const char*)library + names[i];
    const Export* export = FindExport(name);
    Check(export != NULL, "is an export that clients know:", name);
    if (export != NULL) CheckStack(export);
  }
  CheckPlainCalls(libraryName);
  CheckSending();
  CheckCallback();
  DeleteFileA(target);
  Check(FreeLibrary(library) != 0 && GetModuleHandleA("HvApiW32.dll") == NULL,
        "is unloaded:", libraryName);

  Check(count == (DWORD)ExportCount, "has every export:", libraryName);
  printf("exports: %lu of %d\n", count, (int)ExportCount);
  printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
