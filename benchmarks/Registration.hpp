#pragma once

/// Each file registers its benchmarks here, because main decides what is run.
namespace benchmarks {

void registerParsing();    ///< parse, read, print, refuse: ParsingBenchmark.cpp
void registerReferences(); ///< resolve and make relative: ReferenceBenchmark.cpp
void registerValues();     ///< compare, hash, copy, sort: ValueBenchmark.cpp
void registerCoding();     ///< escapes and encodings: CodingBenchmark.cpp
void registerAddresses();  ///< IP addresses and domain names: AddressBenchmark.cpp
void registerThreads();    ///< one thread and two: ThreadBenchmark.cpp
void registerGrowth();     ///< by the length of a text: GrowthBenchmark.cpp

} // namespace benchmarks
