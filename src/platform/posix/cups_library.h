// The client library of CUPS, found and bound at run time, so that this library needs none of it.
//
// What is declared here are the functions and numbers used of its interface of generation 2; the
// numbers are those of RFC 8011 (operations) and RFC 8010 (tags).
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <optional>

namespace hv::platform {

// Connections, messages and attributes are the library's own.
struct HttpConnection;
struct IppMessage;
struct IppAttribute;

enum HttpNumber : int {
  HttpStatusContinue = 100,
  HttpStatusOk = 200,
  HttpFieldContentType = 10,
  HttpUriCodingAll = 15
};

enum IppOperation : int {
  IppCreateJob = 0x05,
  IppSendDocument = 0x06,
  IppCancelJob = 0x08,
  IppGetPrinterAttributes = 0x0B
};

enum IppTag : int {
  IppTagOperation = 0x01,
  IppTagInteger = 0x21,
  IppTagBoolean = 0x22,
  IppTagName = 0x42,
  IppTagKeyword = 0x44,
  IppTagUri = 0x45,
  IppTagMimeType = 0x49
};

enum IppState : int { IppStateError = -1, IppStateData = 3 };

// Replies with a status up to this one report success.
constexpr int IppLastSuccess = 0xFF;

struct CupsFunctions {
  const char* (*cupsServer)();
  int (*cupsEncryption)();
  const char* (*cupsUser)();
  int (*ippPort)();

  void (*httpInitialize)();
  // host, port, no addresses, family, encryption, blocking, milliseconds, no cancel flag
  HttpConnection* (*httpConnect2)(const char*, int, void*, int, int, int, int, int*);
  void (*httpClose)(HttpConnection*);
  // seconds of each wait, no callback, no argument for it
  void (*httpSetTimeout)(HttpConnection*, double, void*, void*);
  int (*httpError)(HttpConnection*);
  int (*httpGetFd)(HttpConnection*);
  void (*httpClearFields)(HttpConnection*);
  void (*httpSetField)(HttpConnection*, int, const char*);
  void (*httpSetLength)(HttpConnection*, std::size_t);  // 0 = in chunks
  int (*httpPost)(HttpConnection*, const char*);
  ssize_t (*httpWrite2)(HttpConnection*, const char*, std::size_t);
  int (*httpFlushWrite)(HttpConnection*);
  int (*httpUpdate)(HttpConnection*);
  // coding, buffer, its size, scheme, user, host, port, resource
  int (*httpAssembleURI)(int, char*, int, const char*, const char*, const char*, int, const char*);

  IppMessage* (*ippNew)();
  IppMessage* (*ippNewRequest)(int);
  void (*ippDelete)(IppMessage*);
  IppAttribute* (*ippAddString)(IppMessage*, int, int, const char*, const char*, const char*);
  IppAttribute* (*ippAddInteger)(IppMessage*, int, int, const char*, int);
  IppAttribute* (*ippAddBoolean)(IppMessage*, int, const char*, char);
  std::size_t (*ippLength)(IppMessage*);
  int (*ippWrite)(HttpConnection*, IppMessage*);
  int (*ippRead)(HttpConnection*, IppMessage*);
  int (*ippGetStatusCode)(IppMessage*);
  IppAttribute* (*ippFindAttribute)(IppMessage*, const char*, int);
  int (*ippGetInteger)(IppAttribute*, int);
  int (*ippGetBoolean)(IppAttribute*, int);
};

// Binds the library; empty when it is missing or lacks a function. It stays loaded, since threads
// keep data of it until they end, and never touches the process's handling of signals.
std::optional<CupsFunctions> LoadCups();

}  // namespace hv::platform
