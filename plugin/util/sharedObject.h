// The base of singletons.
#pragma once

// The base of a class T with one shared object. The object is made on first use and never destroyed, because
// other code may still call it while the process ends.
template<typename T>
class SharedObject {
public:
    SharedObject(const SharedObject &) = delete;
    SharedObject &operator=(const SharedObject &) = delete;

    [[nodiscard]] static T &sharedInstance() {
        if (!s_object)
            s_object = new T;
        return *s_object;
    }
    // Destroys the object; the next sharedInstance() makes a new one. Only for tests and simulations that
    // replace the services inside one process.
    static void renew() {
        delete s_object;
        s_object = nullptr;
    }

protected:
    SharedObject() = default;

private:
    inline static T *s_object = nullptr;
};
