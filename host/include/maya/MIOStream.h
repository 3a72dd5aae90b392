#pragma once

#include <fstream>
#include <iostream>

/// The standard streams under their plain names.

using std::cerr;
using std::cin;
using std::cout;
using std::endl;
using std::flush;
using std::fstream;
using std::ifstream;
using std::ios;
using std::iostream;
using std::istream;
using std::ofstream;
using std::ostream;
