#pragma once

#include "skylume_export.h"

/// Base64 (RFC 4648, standard alphabet, padded with "=", without line breaks). The functions may be called
/// from any thread. Input and output may overlap.
extern "C" {

/// Encodes bytes.
/// @param out    receives ((inLen + 2) / 3) * 4 characters without a terminating zero; it must have the room,
///               whatever outLen says
/// @param outLen in: any number but 0; out: the number of characters written, 0 when there are none
/// @return 0; 1 when a pointer is null or inLen is 0; 6 when *outLen is 0; -1 when memory is short or the
///         result would be too long for *outLen
SKYLUME_EXPORT int cl_base64Encode(const unsigned char* in, unsigned int inLen, unsigned char* out,
                                   unsigned int* outLen);

/// Decodes a text. It ends at its first "=" or zero byte; one "=" or two are padding. Characters and padding
/// together make up groups of four, each of three bytes; what is left over is ignored, and the bytes that
/// padding stands for are taken off. A character outside the alphabet takes a place in its group but adds
/// nothing to it: the characters before it are moved less.
/// @param in     zero-terminated text
/// @param inLen  0 is refused; otherwise without effect
/// @param out    receives the bytes without a terminating zero; it must have the room, whatever outLen says
/// @param outLen in: any number but 0; out: the number of bytes written, 0 when there are none
/// @return 0; 1 when a pointer is null or inLen is 0; 6 when *outLen is 0; -1 when there is no whole group,
///         memory is short or the result would be too long for *outLen
SKYLUME_EXPORT int cl_base64Decode(const unsigned char* in, int inLen, unsigned char* out,
                                   unsigned int* outLen);
}
