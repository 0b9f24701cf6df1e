// The random part of the temporary names in hounzip_fixedname.exe: always zero, so every attempt tries
// "hzu00000000.tmp" and a test can plant a file or link under exactly that name.
#include "hounzip.h"

unsigned int HZ_RandomPart(int attempt) { return 0; }
