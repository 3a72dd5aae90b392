#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "files/fileForm.h"
#include "files/jsonText.h"

/// Text of weight files. In JSON a member for each weight, otherwise a line with vertex and weight. Text
/// only: no host, no files.

/// Builds the text of a file. Six significant digits.
class WeightFileWriter {
  public:
    explicit WeightFileWriter(FileForm form);

    void add(int vertex, double value);

    /// Completes the text. Nothing may be added afterwards.
    const std::string& finish();

  private:
    FileForm form_;
    JsonWriter json_;
    std::string plain_;
};

/// Reads the text of a file, and passes each weight to `take` as soon as it is read. Skips everything that is
/// not a weight of a vertex, and weights too large for single precision. In JSON, a number that cannot be
/// read is 0.
/// @return number of the first malformed line, counted from 1; 0 if there is none, and for JSON
int readWeightFile(std::string_view text, FileForm form,
                   const std::function<void(int vertex, double value)>& take);
