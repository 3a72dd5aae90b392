#pragma once

/// The most memory that the process takes, from the making of this object on, beyond what it took then. Works
/// on Linux; elsewhere the answer is not a number.
class PeakMemory {
  public:
    PeakMemory();
    double megabytes() const;

  private:
    double before_;
};
