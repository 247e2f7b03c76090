#include "CodeTrans/Tables/CodeTable.h"

const unsigned short CodeTable[65536] = {
#include "CodeTrans/Tables/CodeTableRows.inc"
};
