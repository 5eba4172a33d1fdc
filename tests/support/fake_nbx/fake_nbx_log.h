// How the functions of the fake communication library record a call and find their result. Nothing
// here takes memory from operator new or throws: a test may let that memory run out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "hvapi.h"

namespace fakenbx {

// The value of a variable, "" when it is unset.
const char* Variable(const char* name);

// Records a call: its name, the numbers and, when there are bytes, these in hexadecimal.
void Log(const char* name, std::initializer_list<uint32_t> numbers, const void* bytes = nullptr,
         std::size_t count = 0);

// What a function is to return.
uint32_t ResultOf(const char* name);

}  // namespace fakenbx
