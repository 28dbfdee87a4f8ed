// What is wrong with an installation, and how it is told.
#pragma once

#include <string>
#include <vector>

namespace vcc::kit {

struct Fault {
    std::string file;  ///< relative to the installation's folder
    int line = 0;      ///< of a text file, from 1; 0 none
    int record = -1;   ///< of a slot or toggle file; -1 none
    std::string field; ///< of the record, or the key of a line; may be empty
    std::string problem;
    std::string advice;
    bool fatal = false; ///< the program ends before its menu
};

using Faults = std::vector<Fault>;

/// "file: slot 3: dest_x: problem - advice". With `colours` the place and the problem are set off for a terminal.
std::string text_of_fault(const Fault& fault, bool colours);

/// One JSON object with the faults, in UTF-8.
std::string json_of_faults(const Faults& faults, const std::string& installation);

} // namespace vcc::kit
