#include <DesktopHost/Program.h>

int main(int argc, char** argv) {
    return hbr::runDesktopProgram(argc, argv, HEEDBANNER_VERSION);
}
