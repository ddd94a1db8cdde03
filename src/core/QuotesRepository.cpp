#include "core/QuotesRepository.h"
