#pragma once

#include "skylume_export.h"

/// Base64 (RFC 4648, standard alphabet, padded with "=", without line breaks). The functions may be called
/// from any thread. Input and output may overlap.
extern "C" {

/// Encodes bytes.
/// @param out    receives ((inLen + 2) / 3) * 4 characters without a terminating zero; the capacity is not
///               checked
/// @param outLen in: any number but 0; out: the number of characters written, 0 when there are none
/// @return 0; 1 when a pointer is null or inLen is 0; 6 when *outLen is 0; -1 when memory is short or the
///         result would be too long for *outLen
SKYLUME_EXPORT int cl_base64Encode(const unsigned char* in, unsigned int inLen, unsigned char* out,
                                   unsigned int* outLen);

/// Decodes a string up to its first "=" or zero byte; one or two "=" are padding. Four characters, padding
/// included, form a group of three bytes, less one for each "="; an incomplete group is ignored. A character
/// outside the alphabet takes a place in its group but is skipped without a shift.
/// @param in     zero-terminated string
/// @param inLen  must not be 0; otherwise it has no effect
/// @param out    receives the bytes without a terminating zero; the capacity is not checked
/// @param outLen in: any number but 0; out: the number of bytes written, 0 when there are none
/// @return 0; 1 when a pointer is null or inLen is 0; 6 when *outLen is 0; -1 when there is no complete group,
///         memory is short or the result would be too long for *outLen
SKYLUME_EXPORT int cl_base64Decode(const unsigned char* in, int inLen, unsigned char* out,
                                   unsigned int* outLen);
}
