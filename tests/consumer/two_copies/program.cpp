extern "C" {
int seed_1();
int seed_2();
int seed_3();
int throws_1();
int throws_2();
int throws_3();
}

int main()
{
    const bool own_texts = seed_1() == 101 && seed_2() == 102 && seed_3() == 1;
    const bool own_functions = throws_1() == 1 && throws_2() == 1 && throws_3() == 0;
    return own_texts && own_functions ? 0 : 1;
}
