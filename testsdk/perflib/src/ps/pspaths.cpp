// pspaths.cpp - from the argument of a key, often empty, to the path of a file.
#include "ps/pssession.h"

psString psSession::m_defName;
psString psSession::m_inDir;
psString psSession::m_outDir;

bool psSession::isAbsolutePath(psString path) {
    return path[0] == '/' || path[0] == '\\' || (path.size() >= 2 && path[1] == ':');
}

psString psSession::getDirPath(psString path, psString dir) {
    if (isAbsolutePath(path)) {
        return path;
    }
    if (dir.empty()) {
        return m_exePath.getFileDir() + path;
    }
    // What genPathName has built stays as it is.
    if (path.find(dir, 0) == 0) {
        return path;
    }
    return dir + path;
}

psString psSession::getOutPath(psString path) { return getDirPath(path, m_outDir); }

psString psSession::getInPath(psString path) { return getDirPath(path, m_inDir); }

psString psSession::genPathName(psString dir, psString name, psString ext) {
    if (isAbsolutePath(name)) {
        return name;
    }
    if (name.empty()) {
        name = m_defName + ext;
    }
    if (!name.contains(".")) {
        name += ext;
    }
    return dir + name;
}

psString psSession::genOutPath(psString name, psString ext) {
    return genPathName(m_outDir, name, ext);
}

psString psSession::genInPath(psString name, psString ext) {
    return genPathName(m_inDir, name, ext);
}

psString psSession::genSglPath(psString name) { return genOutPath(name, ".end"); }

psString psSession::genDirName(psString dir) {
    if (dir.empty()) {
        return m_exePath.getFileDir();
    }
    char const last = dir[dir.size() - 1];
    if (last != '\\' && last != '/') {
        dir += '/';
    }
    return isAbsolutePath(dir) ? dir : m_exePath.getFileDir() + dir;
}

void psSession::setDefName(psString name) {
    m_defName = name.empty() ? m_exePath.getFileTitle() : name;
}

void psSession::setOutDir(psString dir) { m_outDir = genDirName(dir); }

void psSession::setInDir(psString dir) { m_inDir = genDirName(dir); }
