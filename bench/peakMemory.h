#pragma once

/// Gives memory that was freed back to the system, where the C library can. What is taken afterwards comes
/// fresh, as in a program that has just started.
void returnFreeMemory();

/// The most memory that the process takes, from the making of this object on, beyond what it took then. Works
/// on Linux; elsewhere the answer is not a number.
class PeakMemory {
  public:
    PeakMemory();
    double megabytes() const;

  private:
    double before_;
};
