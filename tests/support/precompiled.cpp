// A program is needed for the headers that the test programs share; it does nothing.
int main() {
    return 0;
}
