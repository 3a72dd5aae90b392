#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "files/fileForm.h"
#include "files/jsonText.h"

/// Text of weight files: in JSON a member per weight, else a line with vertex and weight. Text only: no host,
/// no files.

/// Puts together the text of a file. Six significant digits.
class WeightFileWriter {
  public:
    explicit WeightFileWriter(FileForm form);

    void add(int vertex, double value);

    /// Completes the text; nothing may be added afterwards.
    const std::string& finish();

  private:
    FileForm form_;
    JsonWriter json_;
    std::string plain_;
};

/// Reads the text of a file, and gives each weight away as soon as it is read. Passes over whatever is no
/// weight of a vertex, and over weights beyond single precision; a number that cannot be read is 0 in JSON.
/// @return number of the first malformed line, counted from 1; 0 when there is none, and for JSON
int readWeightFile(std::string_view text, FileForm form,
                   const std::function<void(int vertex, double value)>& take);
