#pragma once

/// Prints name, version, build time and owner.
void printBanner();
