#include <HeedbannerWidgetExtension/WidgetProgram.h>

int main(int argc, char** argv) {
    return hbr::runWidgetProgram(argc, argv, HEEDBANNER_VERSION);
}
