#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "files/jsonText.h"

/// Text of weight files: a member per weight where the name of the file ends in "json" (dataFile.h), else a
/// line with vertex and weight. Text only: no host, no files.

/// Puts together the text of a file. Six significant digits.
class WeightFileWriter {
  public:
    explicit WeightFileWriter(bool isJson);

    void add(int vertex, double value, bool isLast);

    /// Completes the text; nothing may be added afterwards.
    const std::string& finish();

  private:
    bool isJson_;
    JsonWriter writer_;
};

/// Reads the text of a file, and gives each weight away as soon as it is read. Passes over whatever is no
/// weight of a vertex, and over weights beyond single precision; a number that cannot be read is 0 in JSON.
/// @return number of the first malformed line, counted from 1; 0 when there is none, and for JSON
int readWeightFile(std::string_view text, bool isJson,
                   const std::function<void(int vertex, double value)>& take);
