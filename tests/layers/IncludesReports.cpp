#include "report/FileReport.h"
