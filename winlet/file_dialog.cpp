#include "winlet/file_dialog.h"

BOOL GetOpenFileNameA(OPENFILENAMEA*) { return FALSE; }

BOOL GetSaveFileNameA(OPENFILENAMEA*) { return FALSE; }
