// Where the one shared object of a class lives.
#pragma once

// The base of a class T with one shared object. It is made when first asked for and never destroyed: the
// process may end at any time, with other code still calling in.
template<typename T>
class SharedObject {
public:
    [[nodiscard]] static T &sharedInstance() {
        if (!s_object)
            s_object = new T;
        return *s_object;
    }
    // Puts an end to the object; the next sharedInstance() makes a new one. Only for a desktop that starts
    // afresh inside one process, which a plug-in's never does.
    static void renew() {
        delete s_object;
        s_object = nullptr;
    }

private:
    inline static T *s_object = nullptr;
};
