#include "tests/record/recorder.h"

#include <GL/glew.h>
#include <SDL/SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <utility>

#include "geometry/mesh.h"
#include "render/demo.h"
#include "script/resources.h"

namespace {

std::vector<std::string> lines;
std::map<std::string, std::string> told;  // of the state: what was last written down
std::map<std::string, int> calls;         // of the frame

// --- Numbers and names

std::string number(double value) {
    constexpr double nothing = 5e-5;
    char text[32];
    snprintf(text, sizeof text, "%.4g", std::fabs(value) < nothing ? 0 : value);
    return text;
}

std::string numbers(const float* values, int count) {
    std::string text;
    for (int i = 0; i < count; i++) text.append(i ? " " : "").append(number(values[i]));
    return text;
}

template <int count>
std::string floatsOf(GLenum name) {
    float values[count];
    glGetFloatv(name, values);
    return numbers(values, count);
}

int integerOf(GLenum name) {
    GLint value = 0;
    glGetIntegerv(name, &value);
    return value;
}

std::string nameOf(GLint value) {
    static const std::map<GLint, const char*> names = {
        {GL_LEQUAL, "less or equal"},
        {GL_GREATER, "greater"},
        {GL_SRC_ALPHA, "source alpha"},
        {GL_ONE_MINUS_SRC_ALPHA, "1 - source alpha"},
        {GL_ONE_MINUS_SRC_COLOR, "1 - source colour"},
        {GL_CONSTANT_ALPHA, "constant alpha"},
        {GL_MODULATE, "modulate"},
        {GL_ADD, "add"},
        {GL_SPHERE_MAP, "sphere map"},
        {GL_OBJECT_LINEAR, "object planes"},
        {GL_EYE_LINEAR, "eye planes"},
        {GL_REPEAT, "repeat"},
        {GL_CLAMP_TO_EDGE, "clamp to edge"},
        {GL_FLAT, "flat"},
        {GL_SMOOTH, "smooth"},
        {GL_NICEST, "nicest"},
        {GL_FRONT, "front"},
        {GL_BACK, "back"},
    };
    const auto known = names.find(value);
    return known == names.end() ? std::to_string(value) : known->second;
}

// Of a state; of blend factors 0 and 1 mean themselves.
std::string stateOf(GLenum state) {
    return nameOf(integerOf(state));
}

std::string quoted(const std::string& key) {
    return std::string("\"").append(key).append("\"");
}

std::string textureKey(GLint texture) {
    for (const auto& [key, index] : demo->textureNames)
        if (texture != 0 && demo->textures[index].texture == GLuint(texture)) return quoted(key);
    return texture ? "unknown" : "none";
}

std::string programKey(GLhandleARB program) {
    for (const auto& [key, known] : demo->shaders)
        if (program != 0 && known == program) return quoted(key);
    return program ? "unknown" : "fixed function";
}

std::string meshKey(GLint vertexBuffer) {
    for (const auto& [key, set] : demo->meshes)
        for (const Mesh& mesh : *set)
            if (mesh.vertexBuffer == GLuint(vertexBuffer)) return quoted(key);
    return "unknown";
}

// --- Uniforms, as they were set

std::map<GLhandleARB, std::map<std::string, std::string>> uniforms;

PFNGLGETUNIFORMLOCATIONARBPROC realLocation;
// One that a program lacks has no location, and is written down all the same: which ones a compiler keeps
// differs from driver to driver.
std::pair<GLhandleARB, std::string> askedFor;

GLint location(GLhandleARB program, const GLcharARB* name) {
    askedFor = {program, name};
    return realLocation(program, name);
}

void setUniform(const std::string& values) {
    uniforms[askedFor.first][askedFor.second] = values;
    if (askedFor.first != glGetHandleARB(GL_PROGRAM_OBJECT_ARB))
        record::say("uniform of a program that is not in use: " + askedFor.second);
}

template <auto& call, typename... Floats>
void stepBeforeUniform() {
    static const auto real = call;
    call = [](GLint at, Floats... values) {
        const float all[] = {values...};
        setUniform(numbers(all, sizeof...(values)));
        real(at, values...);
    };
}

// --- The state

// What changed since it was last written down.
void tell(const std::string& what, const std::string& how) {
    std::string& known = told[what];
    if (known == how) return;
    known = how;
    lines.push_back("    " + what + ": " + how);
}

std::string whether(GLenum capability, const std::string& how = "on") {
    return glIsEnabled(capability) ? how : "off";
}

std::string matrixOf(GLenum name) {
    float m[16];
    glGetFloatv(name, m);
    std::string text;
    for (int row = 0; row < 4; row++) {
        const float values[] = {m[row], m[row + 4], m[row + 8], m[row + 12]};
        text.append(row ? " | " : "").append(numbers(values, 4));
    }
    return text == "1 0 0 0 | 0 1 0 0 | 0 0 1 0 | 0 0 0 1" ? "identity" : text;
}

std::string generationOf(GLenum capability, GLenum coordinate, const std::string& word) {
    if (!glIsEnabled(capability)) return "";
    GLint mode = 0;
    glGetTexGeniv(coordinate, GL_TEXTURE_GEN_MODE, &mode);
    std::string text = word + nameOf(mode);
    if (mode != GL_SPHERE_MAP) {
        float plane[4];
        glGetTexGenfv(coordinate, mode == GL_EYE_LINEAR ? GL_EYE_PLANE : GL_OBJECT_PLANE, plane);
        text += " " + numbers(plane, 4);
    }
    return text;
}

void tellTexture(int unit) {
    const GLint before = integerOf(GL_ACTIVE_TEXTURE);
    glActiveTexture(GL_TEXTURE0 + unit);
    const std::string name = "unit " + std::to_string(unit);
    // Programs look at what is bound, whether it is enabled or not.
    std::string how = textureKey(integerOf(GL_TEXTURE_BINDING_2D));
    if (glIsEnabled(GL_TEXTURE_2D)) {
        GLint mode = 0;
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
        how += ", " + nameOf(mode) + generationOf(GL_TEXTURE_GEN_S, GL_S, ", s ") +
               generationOf(GL_TEXTURE_GEN_T, GL_T, ", t ");
        const std::string matrix = matrixOf(GL_TEXTURE_MATRIX);
        if (matrix != "identity") how += ", matrix " + matrix;
    } else {
        how += ", off";
    }
    tell(name, how);
    glActiveTexture(GLenum(before));
}

struct Property {
    const char* word;
    GLenum name;
    int count;
};

// Of a light or a face, by GL's own look-up for it.
template <size_t count>
std::string propertiesOf(GLenum owner, void (*lookUp)(GLenum, GLenum, GLfloat*),
                         const Property (&properties)[count]) {
    std::string text;
    for (const Property& property : properties) {
        float values[4];
        lookUp(owner, property.name, values);
        text += std::string(property.word) + " " + numbers(values, property.count);
    }
    return text;
}

std::string lightOf(GLenum light) {
    if (!glIsEnabled(light)) return "off";
    return propertiesOf(light, glGetLightfv,
                        {{"at", GL_POSITION, 4},
                         {", ambient", GL_AMBIENT, 4},
                         {", diffuse", GL_DIFFUSE, 4},
                         {", specular", GL_SPECULAR, 4},
                         {", spot", GL_SPOT_DIRECTION, 3},
                         {"", GL_SPOT_EXPONENT, 1},
                         {"", GL_SPOT_CUTOFF, 1}});
}

std::string materialOf(GLenum face) {
    return propertiesOf(face, glGetMaterialfv,
                        {{"ambient", GL_AMBIENT, 4},
                         {", diffuse", GL_DIFFUSE, 4},
                         {", specular", GL_SPECULAR, 4},
                         {", emission", GL_EMISSION, 4},
                         {", shininess", GL_SHININESS, 1}});
}

void tellLighting() {
    tell("lighting", whether(GL_LIGHTING));
    if (!glIsEnabled(GL_LIGHTING)) return;
    for (int i = 0; i < 8; i++) tell("light " + std::to_string(i), lightOf(GL_LIGHT0 + i));
    tell("front", materialOf(GL_FRONT));
    tell("back", materialOf(GL_BACK));
    tell("light of the room",
         floatsOf<4>(GL_LIGHT_MODEL_AMBIENT) + (integerOf(GL_LIGHT_MODEL_TWO_SIDE) ? ", two-sided" : ""));
}

void tellProgram() {
    const GLhandleARB program = glGetHandleARB(GL_PROGRAM_OBJECT_ARB);
    tell("program", programKey(program));
    if (!program) return;
    std::string values;
    for (const auto& [name, value] : uniforms[program])
        values.append(values.empty() ? "" : ", ").append(name).append(" ").append(value);
    tell("uniforms of " + programKey(program), values);
}

void tellState() {
    tellProgram();
    for (int unit = 0; unit < 3; unit++) tellTexture(unit);
    tell("blending", whether(GL_BLEND, stateOf(GL_BLEND_SRC) + ", " + stateOf(GL_BLEND_DST) + ", constant " +
                                           floatsOf<4>(GL_BLEND_COLOR)));
    tell("depth test", whether(GL_DEPTH_TEST, stateOf(GL_DEPTH_FUNC)));
    tell("depth is written", integerOf(GL_DEPTH_WRITEMASK) ? "yes" : "no");
    tell("alpha test",
         whether(GL_ALPHA_TEST, stateOf(GL_ALPHA_TEST_FUNC) + " " + floatsOf<1>(GL_ALPHA_TEST_REF)));
    tell("culling", whether(GL_CULL_FACE, stateOf(GL_CULL_FACE_MODE)));
    GLint mask[4];
    glGetIntegerv(GL_COLOR_WRITEMASK, mask);
    tell("colours written", std::to_string(mask[0]) + std::to_string(mask[1]) + std::to_string(mask[2]) +
                                std::to_string(mask[3]));
    tell("normals scaled", whether(GL_NORMALIZE));
    tell("shading", stateOf(GL_SHADE_MODEL));
    tell("perspective hint", stateOf(GL_PERSPECTIVE_CORRECTION_HINT));
    tell("line width", floatsOf<1>(GL_LINE_WIDTH) + (glIsEnabled(GL_LINE_SMOOTH) ? ", smooth" : ""));
    tell("point size", floatsOf<1>(GL_POINT_SIZE));
    tell("polygon offset", whether(GL_POLYGON_OFFSET_FILL, floatsOf<1>(GL_POLYGON_OFFSET_FACTOR) + " " +
                                                               floatsOf<1>(GL_POLYGON_OFFSET_UNITS)));
    tellLighting();
    tell("viewport", floatsOf<4>(GL_VIEWPORT));
    tell("projection", matrixOf(GL_PROJECTION_MATRIX));
    tell("view", matrixOf(GL_MODELVIEW_MATRIX));
}

// Meshes of one set are one line, and so are beams that differ in nothing but where they end.
void draw(const std::string& line) {
    if (lines.empty() || lines.back() != line) lines.push_back(line);
}

// --- Polygons and lines, corner by corner

struct Corner {
    float place[3];
    float texCoord[2];
    float colour[4];
};

GLenum mode;
bool isOpen = false;      // between begin and end
bool ofSpots = false;     // of a beam
bool isNextBeam = false;  // in a row, of which the first has told how all are drawn
std::vector<Corner> corners;
Corner pen = {{}, {}, {1, 1, 1, 1}};

// Within a beam, the models say how often.
void setColour(float r, float g, float b, float a) {
    const float colour[] = {r, g, b, a};
    std::copy_n(colour, 4, pen.colour);
    if (!isOpen) calls["glColor"]++;
}

void corner(float x, float y, float z) {
    pen.place[0] = x;
    pen.place[1] = y;
    pen.place[2] = z;
    corners.push_back(pen);
}

std::string spanOf(const float* from, const float* to, int count) {
    return numbers(from, count) + " to " + numbers(to, count);
}

// A quad of one colour whose sides run along the axes, as nearly all do: two of its corners say it all.
bool isRectangle(const Corner* c) {
    const auto same = [](const float* a, const float* b, int count) {
        return numbers(a, count) == numbers(b, count);
    };
    const auto along = [&](int x, int y, int z) {
        return same(&c[x].place[0], &c[y].place[0], 1) && same(&c[x].texCoord[0], &c[y].texCoord[0], 1) &&
               same(&c[x].place[1], &c[z].place[1], 1) && same(&c[x].texCoord[1], &c[z].texCoord[1], 1);
    };
    for (int i = 1; i < 4; i++)
        if (!same(c[i].colour, c[0].colour, 4) || c[i].place[2] != c[0].place[2]) return false;
    return along(0, 3, 1) && along(2, 1, 3);
}

std::string textOf(const Corner& corner) {
    return "(" + numbers(corner.place, 3) + ") at " + numbers(corner.texCoord, 2) + " in " +
           numbers(corner.colour, 4);
}

std::string rectangle(const Corner* c) {
    return spanOf(c[0].place, c[2].place, c[0].place[2] == 0 ? 2 : 3) + " showing " +
           spanOf(c[0].texCoord, c[2].texCoord, 2) + " in " + numbers(c[0].colour, 4);
}

// The first rectangles, or the first corners and the last.
std::string polygon() {
    static const std::map<GLenum, const char*> names = {
        {GL_LINES, "lines"}, {GL_TRIANGLE_STRIP, "triangle strip"}, {GL_QUADS, "quads"}};
    constexpr size_t most = 4;
    const auto known = names.find(mode);
    std::string text = known == names.end() ? "mode " + std::to_string(mode) : known->second;
    text += ", " + std::to_string(corners.size());
    const bool rectangles =
        mode == GL_QUADS && !corners.empty() && corners.size() % 4 == 0 && isRectangle(corners.data());
    const size_t step = rectangles ? 4 : 1;
    for (size_t i = 0; i < std::min(corners.size(), most * step); i += step)
        text.append(i ? ", " : ": ").append(rectangles ? rectangle(&corners[i]) : textOf(corners[i]));
    if (corners.size() > most * step) text += " ... " + textOf(corners.back());
    return text;
}

std::string buffersIn(GLbitfield mask) {
    std::string text;
    if (mask & GL_COLOR_BUFFER_BIT) text += " colour " + floatsOf<4>(GL_COLOR_CLEAR_VALUE);
    if (mask & GL_DEPTH_BUFFER_BIT) text += " depth " + floatsOf<1>(GL_DEPTH_CLEAR_VALUE);
    return text;
}

void copied(GLint x, GLint y, GLsizei width, GLsizei height) {
    lines.push_back("copy " + std::to_string(x) + " " + std::to_string(y) + ", " + std::to_string(width) +
                    " x " + std::to_string(height) + " to " + textureKey(integerOf(GL_TEXTURE_BINDING_2D)));
}

void beginCorners(GLenum value) {
    const bool spotsBefore = ofSpots;
    mode = value;
    isOpen = true;
    ofSpots = mode == GL_QUADS && textureKey(integerOf(GL_TEXTURE_BINDING_2D)) == "\"spot\"";
    isNextBeam = (mode == GL_LINE_STRIP || ofSpots) && (isNextBeam || spotsBefore);
    if (!isNextBeam) tellState();
    glGetFloatv(GL_CURRENT_COLOR, pen.colour);
    float at[4];
    glGetFloatv(GL_CURRENT_TEXTURE_COORDS, at);
    std::copy_n(at, 2, pen.texCoord);
    corners.clear();
}

// Place and direction: where it goes from there is the models' to say.
std::string beam() {
    if (corners.size() < 2) return "beam from nowhere";
    float way[3], length = 0;
    for (int i = 0; i < 3; i++) {
        way[i] = corners[1].place[i] - corners[0].place[i];
        length += way[i] * way[i];
    }
    for (float& w : way) w = std::round(w / std::sqrt(length) * 1000) / 1000;
    return "beam from " + numbers(corners[0].place, 3) + " along " + numbers(way, 3);
}

void endCorners() {
    isOpen = false;
    if (isNextBeam && ofSpots) return;
    const bool isPolygon = mode != GL_LINE_STRIP && !ofSpots;
    std::string text = isPolygon ? polygon() : ofSpots ? "its spots" : beam();
    if (!isPolygon && !isNextBeam)
        text += " in " + numbers(corners.empty() ? pen.colour : corners[0].colour, 4);
    draw(text);
}

PFNGLDRAWRANGEELEMENTSPROC realElements;

void drawElements(GLenum mode, GLuint start, GLuint end, GLsizei count, GLenum type, const void* indices) {
    tellState();
    tell("colour", floatsOf<4>(GL_CURRENT_COLOR));
    draw("mesh " + meshKey(integerOf(GL_ARRAY_BUFFER_BINDING)));
    realElements(mode, start, end, count, type, indices);
}

void sayCalls() {
    std::string text;
    for (const auto& [name, count] : std::exchange(calls, {}))
        text.append(text.empty() ? "" : ", ").append(name).append(" ").append(std::to_string(count));
    lines.push_back("calls: " + text);
}

void stepBetween() {
    realElements = std::exchange(glDrawRangeElementsEXT, drawElements);
    realLocation = std::exchange(glGetUniformLocationARB, location);
    stepBeforeUniform<glUniform1fARB, float>();
    stepBeforeUniform<glUniform2fARB, float, float>();
    stepBeforeUniform<glUniform3fARB, float, float, float>();
    stepBeforeUniform<glUniform4fARB, float, float, float, float>();
}

}  // namespace

// --- The calls that are wrapped

// NAME goes on to the library's own, after BEFORE.
#define WRAPPED(name, parameters, arguments, ...) \
    extern "C" void __real_##name parameters;     \
    extern "C" void __wrap_##name parameters {    \
        __VA_ARGS__;                              \
        __real_##name arguments;                  \
    }

WRAPPED(glBegin, (GLenum value), (value), beginCorners(value))
WRAPPED(glVertex2f, (GLfloat x, GLfloat y), (x, y), corner(x, y, 0))
WRAPPED(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), (x, y, z), corner(x, y, z))
WRAPPED(glVertex3fv, (const GLfloat* v), (v), corner(v[0], v[1], v[2]))
WRAPPED(glTexCoord2f, (GLfloat s, GLfloat t), (s, t), pen.texCoord[0] = s; pen.texCoord[1] = t)
WRAPPED(glTexCoord2fv, (const GLfloat* v), (v), pen.texCoord[0] = v[0]; pen.texCoord[1] = v[1])
WRAPPED(glColor3f, (GLfloat r, GLfloat g, GLfloat b), (r, g, b), setColour(r, g, b, 1))
WRAPPED(glColor4f, (GLfloat r, GLfloat g, GLfloat b, GLfloat a), (r, g, b, a), setColour(r, g, b, a))
WRAPPED(glEnd, (), (), endCorners())
WRAPPED(glClear, (GLbitfield mask), (mask), lines.push_back("clear" + buffersIn(mask)))
WRAPPED(glBitmap,
        (GLsizei width, GLsizei height, GLfloat x, GLfloat y, GLfloat dx, GLfloat dy, const GLubyte* bits),
        (width, height, x, y, dx, dy, bits), draw("glyphs"))
WRAPPED(glCopyTexSubImage2D,
        (GLenum target, GLint level, GLint dx, GLint dy, GLint x, GLint y, GLsizei w, GLsizei h),
        (target, level, dx, dy, x, y, w, h), copied(x, y, w, h))
WRAPPED(glCopyTexImage2D,
        (GLenum target, GLint level, GLenum format, GLint x, GLint y, GLsizei w, GLsizei h, GLint border),
        (target, level, format, x, y, w, h, border), copied(x, y, w, h))
WRAPPED(glFlush, (), (), lines.push_back("flush"))
WRAPPED(SDL_GL_SwapBuffers, (), (), sayCalls(); lines.push_back("swap"))

// Calls that only change the state are counted: one that is undone by the next is seen nowhere else.
#define COUNTED(name, parameters, arguments) WRAPPED(name, parameters, arguments, calls[#name]++)
COUNTED(glEnable, (GLenum a), (a))
COUNTED(glDisable, (GLenum a), (a))
COUNTED(glPushMatrix, (), ())
COUNTED(glPopMatrix, (), ())
COUNTED(glLoadIdentity, (), ())
COUNTED(glMatrixMode, (GLenum a), (a))
COUNTED(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
COUNTED(glScalef, (GLfloat x, GLfloat y, GLfloat z), (x, y, z))
COUNTED(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), (angle, x, y, z))
COUNTED(glBlendFunc, (GLenum a, GLenum b), (a, b))
COUNTED(glBindTexture, (GLenum a, GLuint b), (a, b))
COUNTED(glTexEnvi, (GLenum a, GLenum b, GLint c), (a, b, c))
COUNTED(glTexGeni, (GLenum a, GLenum b, GLint c), (a, b, c))
COUNTED(glTexGenfv, (GLenum a, GLenum b, const GLfloat* c), (a, b, c))
COUNTED(glLightf, (GLenum a, GLenum b, GLfloat c), (a, b, c))
COUNTED(glLightfv, (GLenum a, GLenum b, const GLfloat* c), (a, b, c))
COUNTED(glLightModelfv, (GLenum a, const GLfloat* b), (a, b))
COUNTED(glMaterialf, (GLenum a, GLenum b, GLfloat c), (a, b, c))
COUNTED(glMaterialfv, (GLenum a, GLenum b, const GLfloat* c), (a, b, c))
COUNTED(glShadeModel, (GLenum a), (a))
COUNTED(glLineWidth, (GLfloat a), (a))
COUNTED(glHint, (GLenum a, GLenum b), (a, b))
COUNTED(glDepthFunc, (GLenum a), (a))
COUNTED(glDepthMask, (GLboolean a), (a))
COUNTED(glColorMask, (GLboolean a, GLboolean b, GLboolean c, GLboolean d), (a, b, c, d))
COUNTED(glViewport, (GLint a, GLint b, GLsizei c, GLsizei d), (a, b, c, d))

extern "C" FILE* __real_fopen(const char* path, const char* how);
extern "C" FILE* __wrap_fopen(const char* path, const char* how) {
    record::say("read " + std::string(path));
    return __real_fopen(path, how);
}

extern "C" GLenum __real_glewInit();
extern "C" GLenum __wrap_glewInit() {
    const GLenum error = __real_glewInit();
    stepBetween();
    return error;
}

namespace record {

std::vector<std::string> takeLines() {
    return std::exchange(lines, {});
}

void say(const std::string& line) {
    lines.push_back(line);
}

void sayTables() {
    const GLint bound = integerOf(GL_TEXTURE_BINDING_2D);
    for (const auto& [key, index] : demo->textureNames) {
        const Texture& texture = demo->textures[index];
        GLint wrapS = 0, wrapT = 0, smaller = 0, larger = 0;
        glBindTexture(GL_TEXTURE_2D, texture.texture);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrapS);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, &wrapT);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &smaller);
        glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, &larger);
        char line[256];
        snprintf(line, sizeof line, "texture %d \"%s\", taken for %d x %d, %s, %s, filters %x %x", index,
                 key.c_str(), texture.width, texture.height, nameOf(wrapS).c_str(), nameOf(wrapT).c_str(),
                 unsigned(smaller), unsigned(larger));
        say(line);
    }
    glBindTexture(GL_TEXTURE_2D, GLuint(bound));
    calls.clear();
    for (const auto& [key, set] : demo->meshes) {
        std::string line = "mesh " + key + ", attributes";
        for (int type = 0; type < maxAttribs; type++)
            if (set->count > 0 && set->meshes[0].hasAttrib(type))
                line.append(" ").append(std::to_string(type));
        say(line);
    }
    for (const auto& [key, program] : demo->shaders) say("program " + programKey(program));
    for (const auto& [key, effect] : demo->effects) say("effect " + key);
}

}  // namespace record
