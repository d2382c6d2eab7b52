// The least that a process costs that links libcups: one call, so that the library is kept.
#include <cups/cups.h>

int main(void) { return cupsLastError() == IPP_STATUS_OK ? 0 : 1; }
