// Entry point of the command-line front end.
#include "cli/cli.h"

int main(int argc, char** argv) { return zv::cli::Main(argc, argv); }
