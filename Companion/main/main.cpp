#include <Commands/Program.h>

int main(int argc, char** argv) {
    return hbr::runCompanion(argc, argv);
}
