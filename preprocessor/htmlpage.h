#pragma once

#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"

/// Turns the server-side pages among `files` into Korel source: writes each to a temporary copy and
/// puts the copy's name in its place. Returns whether there was one. No page is converted yet.
bool DoKRHPreprocessor(tDiskMan& disk, tAutoArray<tString>& files, bool debugInfo, bool httpSend);

/// Deletes the copies that DoKRHPreprocessor has put into the list.
void ClearTempKRHFiles(tDiskMan& disk, tAutoArray<tString>& files);
