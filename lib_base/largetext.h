#pragma once

#include <cstddef>

/// Storage for text. Large blocks are mapped directly and unmapped when freed, so a run over many
/// files does not hold on to the memory that an earlier file needed.

/// Null when out of memory.
void* allocateTextBlock(std::size_t bytes) noexcept;
/// Keeps the bytes that fit. Null when out of memory; the old block is then unchanged.
void* resizeTextBlock(void* block, std::size_t oldBytes, std::size_t bytes) noexcept;
/// `bytes` is the current size of the block.
void releaseTextBlock(void* block, std::size_t bytes) noexcept;
