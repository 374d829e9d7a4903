#include <dlfcn.h>

#include <string>

namespace {

int call(void *object, const std::string &name)
{
    auto *const function = reinterpret_cast<int (*)()>(dlsym(object, name.c_str()));
    return function == nullptr ? -2 : function();
}

} // namespace

int main(int argc, char **argv)
{
    constexpr int seeds[] = {101, 102, 1};
    constexpr int throws[] = {1, 1, 0};
    bool all_hold = argc == 4;
    for (int i = 1; i < argc; ++i) {
        void *const object = dlopen(argv[i], RTLD_NOW | RTLD_GLOBAL);
        if (object == nullptr) {
            return 2;
        }
        const std::string copy = std::to_string(i);
        all_hold = all_hold && call(object, "seed_" + copy) == seeds[i - 1];
        all_hold = all_hold && call(object, "throws_" + copy) == throws[i - 1];
    }
    return all_hold ? 0 : 1;
}
