#pragma once
// The MD5 message digest object.

#include <MessageDigest_5/MD5.h>
