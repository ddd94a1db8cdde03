#include "core/QuoteRecord.h"
