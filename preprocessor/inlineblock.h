#pragma once

#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"

/// Turns the inline text blocks of the programs among `files` into statements: writes each program
/// that has one to a temporary copy and puts the copy's name in its place. Returns whether there
/// was one. No block is converted yet.
bool DoBCPreprocessor(tDiskMan& disk, tAutoArray<tString>& files);

/// Deletes the copies that DoBCPreprocessor has put into the list.
void ClearTempBCFiles(tDiskMan& disk, tAutoArray<tString>& files);
