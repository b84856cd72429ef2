// oxdm-admin: the maintenance tool of dictionaries and record files: checks
// a dictionary, creates and upgrades record files, loads and dumps tables as
// CSV, and writes the sample data.
#include <iostream>

#include "commands.h"

int main(int argc, char** argv) {
    oxdm::admin::Words args(argv + 1, argv + argc);
    return oxdm::admin::RunAdmin(args, std::cout, std::cerr);
}
