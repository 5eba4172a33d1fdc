// The decoders of the compression methods of zip archives, one file a method. The formats are those
// of the zip application note; deflate is RFC 1951.
//
// Each decodes the data of one member into the window. All but stored and deflated data have no end
// of their own: they end when the window has the member's declared size. False when the data are
// not of the format or end early; what had been decoded by then is in the window. When the window
// stops (see OutputWindow::Stopped) they return soon, with either result.
#pragma once

#include "zip/member_input.h"
#include "zip/output_window.h"

namespace hv {

bool CopyStored(MemberInput& input, OutputWindow& window);

// Dynamic LZW with codes of 9 to 13 bits and partial clearing.
bool Unshrink(MemberInput& input, OutputWindow& window);

// Follower sets, then matches of which `factor`, 1 to 4, divides the bits between length and
// distance.
bool Unreduce(MemberInput& input, OutputWindow& window, unsigned factor);

// Shannon-Fano codes, with a window of 8 KB or 4 KB, with or without a code for literals.
bool Explode(MemberInput& input, OutputWindow& window, bool largeWindow, bool literalTree);

bool Inflate(MemberInput& input, OutputWindow& window);

}  // namespace hv
