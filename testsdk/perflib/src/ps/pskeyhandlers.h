// pskeyhandlers.h - what each key of the command line means: its echo (_info) and its
// effect (_apply). The effect is carried out also when the echo says "ignored".
#ifndef PS_PSKEYHANDLERS_H
#define PS_PSKEYHANDLERS_H

#include "ps/pssession.h"

#define PS_KEY_HANDLERS(letter)                                                                    \
    psString letter##_info(psString arg);                                                          \
    void letter##_apply(psString arg, psSession* session)
PS_KEY_HANDLERS(B);
PS_KEY_HANDLERS(A);
PS_KEY_HANDLERS(d);
PS_KEY_HANDLERS(i);
PS_KEY_HANDLERS(I);
PS_KEY_HANDLERS(P);
PS_KEY_HANDLERS(o);
PS_KEY_HANDLERS(O);
PS_KEY_HANDLERS(L);
PS_KEY_HANDLERS(r);
PS_KEY_HANDLERS(R);
PS_KEY_HANDLERS(q);
PS_KEY_HANDLERS(Q);
PS_KEY_HANDLERS(u);
PS_KEY_HANDLERS(U);
PS_KEY_HANDLERS(g);
PS_KEY_HANDLERS(n);
PS_KEY_HANDLERS(p);
PS_KEY_HANDLERS(l);
PS_KEY_HANDLERS(f);
PS_KEY_HANDLERS(t);
PS_KEY_HANDLERS(m);
PS_KEY_HANDLERS(k);
PS_KEY_HANDLERS(F);
PS_KEY_HANDLERS(Y);
PS_KEY_HANDLERS(H);
PS_KEY_HANDLERS(W);
PS_KEY_HANDLERS(T);
PS_KEY_HANDLERS(N);
PS_KEY_HANDLERS(S);
PS_KEY_HANDLERS(C);
PS_KEY_HANDLERS(s);
PS_KEY_HANDLERS(e);
PS_KEY_HANDLERS(v);
PS_KEY_HANDLERS(h);
PS_KEY_HANDLERS(question);
#undef PS_KEY_HANDLERS

#endif
