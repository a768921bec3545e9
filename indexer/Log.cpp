#include "indexer/Log.h"

Q_LOGGING_CATEGORY(indexLog, "twinleaf.index")
