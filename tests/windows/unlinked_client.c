// A client that nobody linked to the library: it loads HvApiW32.dll, looks every export up by its
// plain name and calls it by the standard calling convention. Each call is made with every
// alignment that a stack may have, and the stack pointer is checked behind it, so that a function
// which takes another number of arguments than its clients push does not go unnoticed.
//
// Prints one line a check, "ok ..." or "not ok ...", and ends with the counts.
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

// The exports by how many arguments, of 4 bytes each, their clients push: 1, 2, ...
static const char* const Exports[] = {
    "HvDatCloseFile HvDatQueryFilesFree HvFonFindFree HvFilExists HvFilQuerySize "
    "HvParseOptionInfo HvFreeOptionInfo HvParseJobAccountingAlert HvFreeJobAccount "
    "HvGenQueryApiInfo HvNetGetType HvMemFree HvIniOpen HvIniClose HvOpcUnregisterCfg "
    "HvQsfClose",
    "HvDatGetFirstKey HvDatGetNextKey HvFilBackup HvFilCopy HvFilMakePath HvStrCpyFile "
    "HvStrCpyPath HvIniOpen2 HvMacDelete HvOpcRegisterCfg HvOpcGetFileName "
    "HvOpcGetMaxEditLength",
    "HvDatOpenFile HvDatQueryCount HvDatQueryCounts HvDatQueryFiles HvFilModify "
    "HvIniRead HvMacActivate HvMacValidate HvQsfOpen HvZipExplode HvZipImplode",
    "HvDatSendFile HvDatSendString HvDemDownload HvDemFind HvFilChecksum HvFonQueryInfo "
    "HvFonDownload HvGenQueryAdapters HvGenQueryQueues HvGenResource HvIniWrite "
    "HvIniWriteAll HvIniDelete HvMacCreate HvOpcGetPageDefaults HvOpcGetPageOmVars "
    "HvQsfGetVariables",
    "HvMacFind HvFonConvert HvOpcGetTextListing HvOpcGetSpinControlLimits "
    "HvQsfIniGetSection",
    "HvFonFind HvMacDownload HvWebGetURL",
    "HvFonFind2 HvIniRead2 HvWebGetCGIURL",
};
enum { MostArguments = sizeof Exports / sizeof Exports[0] };

static HMODULE library;

// How many names the export table of a loaded module holds.
static DWORD CountNames(HMODULE module) {
  const BYTE* base = (const BYTE*)module;
  const IMAGE_DOS_HEADER* dos = (const IMAGE_DOS_HEADER*)base;
  const IMAGE_NT_HEADERS32* nt = (const IMAGE_NT_HEADERS32*)(base + dos->e_lfanew);
  const DWORD place = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT].VirtualAddress;
  return ((const IMAGE_EXPORT_DIRECTORY*)(base + place))->NumberOfNames;
}

typedef uint32_t(__stdcall* OpenFunction)(const char*, uint32_t);

static char target[MAX_PATH];

static uint32_t Address(const void* p) {
  return (uint32_t)(uintptr_t)p;
}

// ---- calls with an eye on the stack ----

// Pushes the arguments on a stack that stands `misalignment` bytes below a multiple of 16 and calls
// the function. Returns its result; `left` receives how many bytes of arguments it left behind
// (negative when it took more than there were).
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

// Fills the arguments of a call that does nothing: zeros, which exports refuse, but for those that
// trust what they are given. These get a record to fill, or a fresh handle and empty texts.
static void FillArguments(const char* name, uint32_t count, uint32_t arguments[MostArguments]) {
  enum { BufferSize = 5 };
  static char scratch[1024];
  memset(scratch, 0, sizeof scratch);
  memset(arguments, 0, MostArguments * sizeof arguments[0]);
  const int wantsHandle = strncmp(name, "HvIni", 5) == 0 && strncmp(name, "HvIniOpen", 9) != 0;
  if (!wantsHandle && strcmp(name, "HvGenQueryApiInfo") != 0) return;
  for (uint32_t i = 0; i < count; ++i) arguments[i] = Address(scratch);
  if (wantsHandle) {
    arguments[0] = ((OpenFunction)(void*)GetProcAddress(library, "HvIniOpen2"))(target, 8);
    arguments[BufferSize] = sizeof scratch / 2;
  }
}

// Calls an export at every alignment of the stack.
static void CheckStack(const char* name, uint32_t count) {
  const FARPROC function = GetProcAddress(library, name);
  int32_t left = 0;
  Check(function != NULL, "is found by its plain name:", name);
  for (uint32_t misalignment = 0; function != NULL && misalignment < 16; misalignment += 4) {
    uint32_t arguments[MostArguments];
    int32_t leftHere = 0;
    FillArguments(name, count, arguments);
    CallOnStack(function, arguments, count, misalignment, &leftHere);
    if (leftHere != 0) left = leftHere;
  }
  Check(left == 0, "takes its arguments from the stack:", name);
}

// Checks all exports and returns their number.
static int CheckStacks(void) {
  int exports = 0;
  for (uint32_t i = 0; i < MostArguments; ++i) {
    char names[1024];
    strcpy(names, Exports[i]);
    for (const char* name = strtok(names, " "); name != NULL; name = strtok(NULL, " ")) {
      CheckStack(name, i + 1);
      ++exports;
    }
  }
  return exports;
}

// ---- calls as an application makes them ----

static uint32_t linesSeen;

static uint32_t __stdcall MarkLine(char* line, uint32_t argument) {
  linesSeen += argument;
  line[0] = '#';
  return 0;
}

static void CheckCallback(void) {
  const uint32_t arguments[] = {Address(target), 1000, (uint32_t)(uintptr_t)MarkLine};
  char bytes[32] = "";
  int32_t left = 0;
  FILE* file = fopen(target, "wb");
  if (file != NULL) {
    fputs("one\ntwo\n", file);
    fclose(file);
  }
  const uint32_t code = CallOnStack(GetProcAddress(library, "HvFilModify"), arguments, 3, 0, &left);
  Check(code == 0 && left == 0, "calls back by the standard convention:", "HvFilModify");
  Check(linesSeen == 2000, "passes the caller's argument:", "HvFilModify");
  file = fopen(target, "rb");
  if (file != NULL) {
    fread(bytes, 1, sizeof bytes - 1, file);
    fclose(file);
  }
  Check(strcmp(bytes, "#ne\r\n#wo\r\n") == 0, "writes what the callback made:", "HvFilModify");
}

int main(int argc, char** argv) {
  const char* libraryName = argc > 1 ? argv[1] : "HvApiW32.dll";
  char folder[MAX_PATH];
  library = LoadLibraryA(libraryName);
  Check(library != NULL, "loads:", libraryName);
  if (library == NULL) return 1;
  GetTempPathA(sizeof folder, folder);
  GetTempFileNameA(folder, "hv", 0, target);

  const DWORD count = CountNames(library);
  const int known = CheckStacks();
  Check(count == (DWORD)known, "has these exports and no others:", libraryName);
  CheckCallback();
  DeleteFileA(target);
  Check(FreeLibrary(library) != 0 && GetModuleHandleA("HvApiW32.dll") == NULL,
        "is unloaded:", libraryName);

  printf("exports: %lu of %d\n", count, known);
  printf("%d passed, %d failed\n", passed, failed);
  return failed == 0 ? 0 : 1;
}
