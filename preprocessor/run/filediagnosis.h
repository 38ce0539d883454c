#pragma once

#include "korelpre/errors/diagnostic.h"
#include "lib_base/diskman.h"
#include "lib_base/stringz.h"
#include "preprocessor/convert/page.h"
#include "preprocessor/copy/normalise.h"

/// What is wrong with the file `name` as a whole. `slug` is a literal.
precomp::tDiagnosis fileDiagnosis(const tString& name, const char* slug, std::string_view message);

/// Why the source `name`, which was read as `readName` of `files`, could not be normalised. Reads
/// the file once more when there is a line to show.
precomp::tDiagnosis normaliseDiagnosis(tDiskMan& files, const tString& readName,
                                       const tString& name, const tNormaliseFailure& failure);

/// What is wrong with the page `name`.
precomp::tDiagnosis pageDiagnosis(tDiskMan& files, const tString& name, const tPageError& error);
