// One line per measure: ours, the peer's figure from the same run, and their ratio.

#pragma once

#include <string>

namespace bench {

/// Starts a group of measures.
void ReportGroup(const std::string &title);

/// Times in seconds; the ratio is ours to the peer's.
void Report(const std::string &measure, double ours, const std::string &peer, double peers);

/// A time in seconds that has no peer.
void ReportAlone(const std::string &measure, double ours);

/// A number of bytes, alone or beside a peer's.
void ReportBytes(const std::string &measure, double bytes);
void ReportBytes(const std::string &measure, double ours, const std::string &peer, double peers);

}  // namespace bench
